// The MIDI input configurations of the current program and their presets.
#pragma once

#include "input/SectionPresets.h"
#include "midiinput/MidiEventConfigurationMap.h"
#include "platform/ThreadMessages.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Backend::MidiInput {

// The numbers of messages to the backend's thread and to the window; what each carries is said where it is posted.
inline constexpr std::uint32_t midiEventsPutMessage = Platform::applicationMessage + 951;
inline constexpr std::uint32_t midiInputLoadedMessage = Platform::applicationMessage + 952;
inline constexpr std::uint32_t midiInputPresetLoadedMessage = Platform::applicationMessage + 953;
inline constexpr std::uint32_t midiEventsRemovedMessage = Platform::applicationMessage + 956;

// Starts empty. The map is replaced, never changed: who reads it keeps what he has. Each change is told to the window,
// which gets copies of its own. [backend] but where marked
class ConfigurationSection final {
public:
    using Map = MidiEventConfigurationMap;

    // The references outlive the section.
    ConfigurationSection(QelIF& qel, std::filesystem::path presetFolder,
                         const std::function<void(const Platform::Fault&)>& reportFault);

    [[nodiscard]] const std::shared_ptr<const Map>& current() const { return map_; }
    [[nodiscard]] std::shared_ptr<const Map> map() const; // [any]

    // Whole sections. The window is posted a Map (midiInputLoadedMessage).

    void setDefault() { set({}); }
    // A section of a program, which may stand for a preset (SectionPresets).
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section that its preset says all of is written as the name of the preset.
    void write(std::ostream& out, int depth, bool allowReference) const;
    void set(Map map);

    // Adds configurations or replaces those with their events. The window is posted the list (midiEventsPutMessage).
    void put(const std::vector<MidiEventConfiguration>& configurations);
    // Takes configurations away, so that a more general one may be found in their place. The window is posted the list
    // (midiEventsRemovedMessage).
    void remove(const std::vector<MidiEvent>& events);

    // Presets, by name.

    // What cannot be read is reported and changes nothing. The window is posted midiInputPresetLoadedMessage, too.
    void loadPreset(const std::string& name);
    // With a list of events only those, to be merged. A file that cannot be written changes nothing, without a word.
    void savePreset(const std::string& name, const std::vector<MidiEvent>& events);
    void storePreset(const std::string& name, const Map& map) { presets_.store(name, map); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

private:
    void replace(Map map);
    // Posts a copy, if there is a window.
    template <typename Value> void tellWindow(std::uint32_t message, const Value& value) const;

    QelIF& qel_;
    Component::SectionPresets<Map, std::vector<MidiEvent>> presets_;
    mutable std::mutex mutex_; // of the pointer
    std::shared_ptr<const Map> map_;
    bool isChanged_ = false; // since it was read as a whole
};

} // namespace Backend::MidiInput
