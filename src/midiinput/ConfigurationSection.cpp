#include "midiinput/ConfigurationSection.h"

#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "midiinput/MidiInputXml.h"

#include <utility>

namespace Backend::MidiInput {

namespace {

const MidiEventConfigurationMap& noConfigurations() {
    static const MidiEventConfigurationMap map;
    return map;
}

Component::SectionText<MidiEventConfigurationMap, std::vector<MidiEvent>> sectionText() {
    using Map = MidiEventConfigurationMap;
    return {readMidiInput, [](std::ostream& out, int depth, const Map& map) { writeMidiInput(out, depth, map); },
            [](std::ostream& out, const Map& map, const std::vector<MidiEvent>& events) {
                writeMidiInput(out, 0, map, events);
            }};
}

} // namespace

ConfigurationSection::ConfigurationSection(QelIF& qel, std::filesystem::path presetFolder,
                                           const std::function<void(const Platform::Fault&)>& reportFault)
    : qel_(qel), presets_(std::move(presetFolder), midiInputFormat(), sectionText(), noConfigurations(), reportFault),
      map_(std::make_shared<const Map>()) {}

std::shared_ptr<const ConfigurationSection::Map> ConfigurationSection::map() const {
    const std::lock_guard lock(mutex_);
    return map_;
}

void ConfigurationSection::replace(Map map) {
    for (const auto& [event, configuration] : map) {
        configuration.setQel(&qel_);
    }
    auto replacement = std::make_shared<const Map>(std::move(map));
    const std::lock_guard lock(mutex_);
    map_.swap(replacement);
}

template <typename Value> void ConfigurationSection::tellWindow(std::uint32_t message, const Value& value) const {
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        postCopy(value, [&](std::uintptr_t copy) { return Platform::postWindowMessage(window, {message, copy, 0}); });
    }
}

void ConfigurationSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, *map_));
}

void ConfigurationSection::write(std::ostream& out, int depth, bool allowReference) const {
    presets_.writeSection(out, depth, *map_, isChanged_, allowReference);
}

void ConfigurationSection::set(Map map) {
    replace(std::move(map));
    isChanged_ = false;
    tellWindow(midiInputLoadedMessage, *map_);
}

void ConfigurationSection::put(const std::vector<MidiEventConfiguration>& configurations) {
    Map map = *map_;
    for (const MidiEventConfiguration& configuration : configurations) {
        map.store(configuration.event, configuration);
    }
    replace(std::move(map));
    isChanged_ = true;
    tellWindow(midiEventsPutMessage, configurations);
}

void ConfigurationSection::remove(const std::vector<MidiEvent>& events) {
    Map map = *map_;
    for (const MidiEvent& event : events) {
        map.remove(event);
    }
    replace(std::move(map));
    isChanged_ = true;
    tellWindow(midiEventsRemovedMessage, events);
}

void ConfigurationSection::loadPreset(const std::string& name) {
    auto loaded = presets_.load(name, *map_);
    if (!loaded) {
        return;
    }
    set(std::move(*loaded));
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        static_cast<void>(Platform::postWindowMessage(window, {midiInputPresetLoadedMessage, 0, 0}));
    }
}

void ConfigurationSection::savePreset(const std::string& name, const std::vector<MidiEvent>& events) {
    if (presets_.save(name, *map_, events)) {
        Map map = *map_;
        map.presetName = name;
        replace(std::move(map));
        isChanged_ = false;
    }
}

} // namespace Backend::MidiInput
