#include "input/ComputerInputSection.h"

#include "input/ComputerInputXml.h"
#include "input/DefaultKeys.h"
#include "values/AttributeReading.h"

#include <utility>

namespace Backend::ComputerInput {

namespace {

KeyConfigurationMap builtInKeys(QelIF& qel) {
    KeyConfigurationMap map;
    readComputerInput(defaultComputerInput(), qel, map);
    return map;
}

// A preset that the section names says its useKeyUpMod, too.
Component::SectionText<KeyConfigurationMap, std::vector<Key>> sectionText(QelIF& qel) {
    return {[&qel](const Platform::XmlElement& section, KeyConfigurationMap& map) {
                const bool useKeyUpMod = map.useKeyUpMod;
                readComputerInput(section, qel, map);
                if (!readText(section, computerInputFormat()["preset"]).empty()) {
                    map.useKeyUpMod = useKeyUpMod;
                }
            },
            [](std::ostream& out, int depth, const KeyConfigurationMap& map) { writeComputerInput(out, depth, map); },
            [](std::ostream& out, const KeyConfigurationMap& map, const std::vector<Key>& keys) {
                writeComputerInput(out, 0, map, keys);
            },
            writeComputerInputReference};
}

} // namespace

ComputerInputSection::ComputerInputSection(QelIF& qel, std::filesystem::path presetFolder,
                                           const std::function<void(const Platform::Fault&)>& reportFault)
    : builtIn_(builtInKeys(qel)),
      presets_(std::move(presetFolder), computerInputFormat(), sectionText(qel), builtIn_, reportFault) {
    setDefault();
}

void ComputerInputSection::keyDown(const Key& key, bool repeat) {
    if (key.canBePressed()) {
        pressed_.down(key, repeat, map_);
    }
}

void ComputerInputSection::keyUp(const Key& key) {
    if (key.canBePressed()) {
        pressed_.up(key, map_);
    }
}

void ComputerInputSection::setDefault() {
    set(builtIn_);
}

void ComputerInputSection::set(KeyConfigurationMap map) {
    map_ = std::make_shared<const KeyConfigurationMap>(std::move(map));
}

void ComputerInputSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, *map_));
}

void ComputerInputSection::write(std::ostream& out, int depth, bool allowReference) const {
    presets_.writeSection(out, depth, *map_, false, allowReference);
}

void ComputerInputSection::setChanged(KeyConfigurationMap map) {
    if (!presets_.exists(map.presetName)) {
        map.presetName.clear();
    }
    set(std::move(map));
}

void ComputerInputSection::put(const std::vector<KeyConfiguration>& configurations) {
    KeyConfigurationMap map = *map_;
    for (const KeyConfiguration& configuration : configurations) {
        map.store(configuration.key, configuration);
    }
    setChanged(std::move(map));
}

void ComputerInputSection::setUseKeyUpMod(bool on) {
    KeyConfigurationMap map = *map_;
    map.useKeyUpMod = on;
    setChanged(std::move(map));
}

void ComputerInputSection::loadPreset(const std::string& name) {
    if (auto loaded = presets_.load(name, *map_)) {
        set(std::move(*loaded));
    }
}

void ComputerInputSection::savePreset(const std::string& name, const std::vector<Key>& keys) {
    if (presets_.save(name, *map_, keys)) {
        KeyConfigurationMap map = *map_;
        map.presetName = name;
        set(std::move(map));
    }
}

} // namespace Backend::ComputerInput
