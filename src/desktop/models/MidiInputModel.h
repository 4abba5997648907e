// What incoming MIDI messages do.
#pragma once

#include "desktop/models/Model.h"
#include "midiinput/MidiEventConfigurationMap.h"

#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace Desktop {

class Models;

class MidiInputModel final : public Model {
    Q_OBJECT

public:
    explicit MidiInputModel(Models& models);

    [[nodiscard]] const Backend::MidiInput::MidiEventConfigurationMap& map() const { return map_; }
    // The event in words: "Note On C4", "Pitch Bend, In 1, channel 1".
    [[nodiscard]] QString textOf(const Backend::MidiInput::MidiEvent& event) const;

    // Edits, which can be undone.

    // `isGesture`: one of many in a row, that are undone as one.
    void put(const QString& text, const Backend::MidiInput::MidiEventConfiguration& configuration,
             bool isGesture = false);
    void remove(const Backend::MidiInput::MidiEvent& event);
    // The same for another event; false, and nothing happens, when there is something for that already.
    bool move(const Backend::MidiInput::MidiEvent& from, const Backend::MidiInput::MidiEvent& to);
    void loadPreset(const std::string& name);

private:
    // What is there for an event, or that there is nothing.
    struct State {
        Backend::MidiInput::MidiEvent event{};
        std::optional<Backend::MidiInput::MidiEventConfiguration> configuration{};

        friend bool operator==(const State& a, const State& b) {
            return a.event == b.event && a.configuration == b.configuration;
        }
    };
    using States = std::vector<State>;

    [[nodiscard]] State stateOf(const Backend::MidiInput::MidiEvent& event) const;
    void edit(const QString& text, States after, int key = 0);
    void set(const States& states);
    // True for what comes back of our own edits while later ones to the same event are still on their way.
    [[nodiscard]] bool isOutdated(const Backend::MidiInput::MidiEvent& event);

    Models& models_;
    Backend::MidiInput::MidiEventConfigurationMap map_;
    std::map<std::uint32_t, int> posted_; // edits of an event that have not come back, by its packed key
};

} // namespace Desktop
