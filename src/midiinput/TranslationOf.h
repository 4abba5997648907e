// The class of the translations of one action.
#pragma once

#include "input/ActionForms.h"
#include "input/ActionTable.h"
#include "midiinput/Translation.h"
#include "midiinput/TranslationMidiForm.h"
#include "midiinput/TranslationVisitor.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>

namespace Backend::MidiInput::TranslationManagement {

template <std::size_t LINE> using FormOfLine = Actions::FormOfCall<TranslationFamily, Actions::CallOfLine<LINE>>;

// LINE: of the action in the table. Translations.h gives the classes their names.
template <std::size_t LINE> class TranslationOf final : public Translation, public FormOfLine<LINE>::Settings {
public:
    static constexpr const Actions::Action& ACTION = Actions::actions[LINE];
    using Form = FormOfLine<LINE>;
    using Settings = typename Form::Settings;
    using Message = MidiEngine::QelMidiMessage;

    // With default settings.
    TranslationOf() = default;
    // With the settings in the attributes of an element; the element's name is not looked at.
    explicit TranslationOf(const Platform::XmlElement& element) { Form::read(call(), element, *this); }

    std::unique_ptr<Translation> clone() const override { return std::make_unique<TranslationOf>(*this); }
    const std::string& getName() const override {
        static const std::string name(ACTION.translation);
        return name;
    }
    void writeXml(std::ostream& out, int depth) const override {
        XmlWriter xml(out, depth);
        xml.begin(ACTION.translation);
        Form::write(call(), *this, xml);
        xml.end();
    }
    // Two bases have one: a translation is told apart by its class, settings by their type.
    using Settings::accept;
    void accept(TranslationVisitor& visitor) const override { visitor.visit(*this); }
    TranslationSettingsType& getSettings() override { return *this; }
    bool isDefault() const override {
        if constexpr (LINE == Actions::lineOfTranslation("Unchanged")) {
            return this->zone == Settings::NOT_SET && this->output == Settings::NOT_SET && this->channel.isDefault() &&
                   this->d1.getKind() == MidiTranslationValue::Kind::d1 &&
                   this->d2.getKind() == MidiTranslationValue::Kind::d2;
        }
        return false;
    }
    void execute(const Message& incoming) const override {
        if (getQel() != nullptr) {
            Form::perform(call(), *this, *getQel(), incoming);
        }
    }
    MidiEventIdentity getMidiEvent(const Message& incoming) const override {
        return Form::midiEvent(call(), *this, incoming);
    }
    int getHelpId() const override { return ACTION.helpId; }
    std::optional<Message> getMidiMessage(const Message& incoming) const override {
        return Form::midiMessage(call(), *this, incoming);
    }
    bool onlyPlays() const override {
        using Call = Actions::CallOfLine<LINE>;
        return std::is_same_v<Call, Actions::SendMidi> || std::is_same_v<Call, Actions::NoOperation>;
    }

private:
    static constexpr const auto& call() { return std::get<ACTION.call.index()>(ACTION.call); }
};

} // namespace Backend::MidiInput::TranslationManagement
