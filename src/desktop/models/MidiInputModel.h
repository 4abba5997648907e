// What incoming MIDI messages do.
#pragma once

#include "desktop/models/Model.h"
#include "midiinput/MidiEventConfigurationMap.h"

#include <QString>

namespace Desktop {

class Models;

class MidiInputModel final : public Model {
    Q_OBJECT

public:
    explicit MidiInputModel(Models& models);

    [[nodiscard]] const Backend::MidiInput::MidiEventConfigurationMap& map() const { return map_; }
    // The event in words: "Control Change 7: Channel Volume, any input, any channel".
    [[nodiscard]] QString textOf(const Backend::MidiInput::MidiEvent& event) const;
    // The translations as they are stored, one a line.
    [[nodiscard]] static QString textOf(const Backend::MidiInput::MidiEventConfiguration& configuration);
    // From such lines; empty when one cannot be read, which `fault` says then.
    [[nodiscard]] static std::optional<Backend::MidiInput::MidiEventConfiguration::Translations>
    translationsIn(const QString& text, QString& fault);

    // An edit, which can be undone.
    void put(const Backend::MidiInput::MidiEventConfiguration& configuration);

private:
    Models& models_;
    Backend::MidiInput::MidiEventConfigurationMap map_;
};

} // namespace Desktop
