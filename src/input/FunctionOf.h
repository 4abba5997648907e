// The class of the functions of one action.
#pragma once

#include "input/ActionForms.h"
#include "input/ActionTable.h"
#include "input/Function.h"
#include "input/FunctionVisitor.h"
#include "input/MidiForm.h"

#include <cstddef>
#include <memory>
#include <string>
#include <variant>

namespace Backend::FunctionManagement {

template <std::size_t LINE> using FormOfLine = Actions::FormOfCall<FunctionFamily, Actions::CallOfLine<LINE>>;

// LINE: of the action in the table. Functions.h gives the classes their names.
template <std::size_t LINE> class FunctionOf final : public Function, public FormOfLine<LINE>::Settings {
public:
    static constexpr const Actions::Action& ACTION = Actions::actions[LINE];
    using Form = FormOfLine<LINE>;
    using Settings = typename Form::Settings;

    // With default settings.
    explicit FunctionOf(QelIF& qel) : FunctionOf(Platform::XmlElement{}, qel) {}
    // With the settings in the attributes of an element; the element's name is not looked at.
    FunctionOf(const Platform::XmlElement& element, QelIF& qel) : Function(qel) { Form::read(call(), element, *this); }

    bool equals(const Function& other) const override {
        const auto* const same = dynamic_cast<const FunctionOf*>(&other);
        return same != nullptr && Form::equal(*this, *same);
    }
    std::unique_ptr<Function> clone() const override { return std::make_unique<FunctionOf>(*this); }
    void execute() const override { Form::perform(call(), *this, getQel()); }
    const std::string& getName() const override {
        static const std::string name(ACTION.function);
        return name;
    }
    // Two bases have one: a function is told apart by its class, settings by their type.
    using Settings::accept;
    void accept(FunctionVisitor& visitor) const override { visitor.visit(*this); }
    void writeXml(std::ostream& out, int depth) const override {
        XmlWriter xml(out, depth);
        xml.begin(ACTION.function);
        Form::write(call(), *this, xml);
        xml.end();
    }
    MidiEventIdentity getMidiEvent() const override { return Form::midiEvent(call(), *this); }
    int getHelpId() const override { return ACTION.helpId; }
    FunctionSettingsType& getSettings() override { return *this; }

private:
    static constexpr const auto& call() { return std::get<ACTION.call.index()>(ACTION.call); }
};

} // namespace Backend::FunctionManagement
