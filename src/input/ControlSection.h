// The on-screen controls of the current program.
#pragma once

#include "input/ControlBanks.h"
#include "input/ControlFollower.h"
#include "input/ControlMap.h"
#include "input/SectionPresets.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectControlType.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
namespace MidiEngine {
class MidiEngine;
}
} // namespace Backend

namespace Backend::Controls {

// Starts with the built-in controls. Whatever is asked of it, it first takes in what has passed the engine.
//
// A message that passes moves the controls that are bound to it and is not sent again. A message of a control moves the
// others that are bound to the same; the control itself only if something else has moved it since it sent: then its
// message went out behind that. So all controls that are bound to one event end where the last message left them.
//
// A label and a control without a type keep their value, whatever happens, and send nothing. [backend]
class ControlSection final {
public:
    // The references outlive the section. `wake` is called on the clock thread when something has passed for a control:
    // it must not block and says whether takeIn() will be called.
    ControlSection(QelIF& qel, MidiEngine::MidiEngine& engine, std::filesystem::path presetFolder,
                   const std::function<void(const Platform::Fault&)>& reportFault, std::function<bool()> wake);
    ~ControlSection();
    ControlSection(const ControlSection&) = delete;
    ControlSection& operator=(const ControlSection&) = delete;

    [[nodiscard]] const ControlMap& map();
    [[nodiscard]] const std::set<Cell>& selection() const { return selection_; }
    // Another number after each change but that of a value.
    [[nodiscard]] std::uint32_t revision() const { return revision_; }

    // Whole sections. Nothing is selected then.

    void setDefault();
    // A section of a program, which may stand for a preset (SectionPresets).
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section that its preset says all of is written as the name of the preset.
    void write(std::ostream& out, int depth, bool allowReference);
    void set(ControlMap map);

    // Adds controls or replaces those in their cells.
    void put(const std::vector<Control>& controls);

    // Values. Each control sends its events in order; one that carries no number only when the value has changed, or
    // when it is sent on purpose. An unknown cell changes nothing.

    enum class Tell { nobody, window };
    void setValue(const Cell& cell, std::int32_t value, Tell tell);
    // The control has been let go: it springs back if it is one that does.
    void release(const Cell& cell);
    void change(const SelectControlType& which, const RelativeFixedValue& value);
    void send(const SelectControlType& which);
    // Sends the controls that are to be sent when the program starts.
    void sendAutomatically();

    // Following.

    void takeIn();
    // Moves what the message is for as if it had passed the engine.
    void update(const MidiEngine::QelMidiMessage& message);

    // The selection, as ControlGrid has it.

    void select(const SelectControlType& which);
    // Exactly these, as far as there are controls.
    void select(const std::vector<Cell>& cells);
    // Asks the window, if there is one, to give a control the keyboard.
    void setFocus(const SelectControlType& which);

    // Presets, by name.

    // What cannot be read is reported and changes nothing.
    void loadPreset(const std::string& name);
    // With a list of cells only those, to be merged. A file that cannot be written changes nothing, without a word.
    void savePreset(const std::string& name, const std::vector<Cell>& cells);
    void storePreset(const std::string& name, const ControlMap& map) { presets_.store(name, map); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

private:
    // Takes in what has passed for the map as it is, has it changed, and follows what it is then.
    template <typename Change> void exchange(Change change);
    void assign(Control& control, std::int32_t value, Tell tell);
    void follow(const ControlFollower::Passed& passed);
    void tellWindow(const Control& control) const;
    enum class Numberless { send, skip };
    void sendEvents(const Control& control, Numberless numberless);

    QelIF& qel_;
    MidiEngine::MidiEngine& engine_;
    std::function<bool()> wake_;
    Component::SectionPresets<ControlMap, std::vector<Cell>> presets_;
    ControlMap map_;
    std::uint32_t revision_ = 0;
    bool isChanged_ = false; // since it was read as a whole
    std::set<Cell> selection_;
    std::set<Cell> movedByOthers_; // since they sent
    ControlBanks banks_;
    std::unique_ptr<ControlFollower> follower_; // of map_
};

} // namespace Backend::Controls
