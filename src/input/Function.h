// What a key, a control or a joystick button makes the program do.
#pragma once

#include "input/FunctionSettingsTypes.h"
#include "input/MidiEventIdentity.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace Backend {
class QelIF;
}

namespace Backend::FunctionManagement {

class FunctionVisitor;

// Acts through the facade only. Its settings are set before it is put to use and then stay as they are, so that it may
// be shared and be executed while the configuration that it comes from is exchanged.
class Function {
public:
    // The facade outlives the function.
    explicit Function(QelIF& qel) : qel_(qel) {}
    virtual ~Function() = default;
    Function& operator=(const Function&) = delete;

    // True for the same class with the same settings.
    [[nodiscard]] virtual bool equals(const Function& other) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Function> clone() const = 0;
    // Performs the action once; what the facade throws passes. [backend]
    virtual void execute() const = 0;
    // The keyword: the name of its XML element.
    [[nodiscard]] virtual const std::string& getName() const = 0;
    virtual void accept(FunctionVisitor& visitor) const = 0;
    // The element on a line of its own behind `depth` tabs.
    virtual void writeXml(std::ostream& out, int depth) const = 0;
    // Empty for a function that sends no MIDI.
    [[nodiscard]] virtual MidiEventIdentity getMidiEvent() const = 0;
    // The number of its text in helpText().
    [[nodiscard]] virtual int getHelpId() const = 0;
    // For editing by a FunctionSettingsVisitor.
    [[nodiscard]] virtual FunctionSettingsType& getSettings() = 0;

protected:
    Function(const Function&) = default;
    [[nodiscard]] QelIF& getQel() const { return qel_; }

private:
    QelIF& qel_;
};

} // namespace Backend::FunctionManagement
