#include "input/ComputerInputSection.h"

#include "input/ComputerInputXml.h"
#include "input/DefaultKeys.h"
#include "values/AttributeReading.h"

#include <sstream>
#include <utility>

namespace Backend::ComputerInput {

namespace {

KeyConfigurationMap builtInKeys(QelIF& qel) {
    KeyConfigurationMap map;
    readComputerInput(defaultComputerInput(), qel, map);
    return map;
}

// A preset that the section names says its useKeyUpMod, too.
Component::SectionPresets<KeyConfigurationMap>::Read readWith(QelIF& qel) {
    return [&qel](const Platform::XmlElement& section, KeyConfigurationMap& map) {
        const bool useKeyUpMod = map.useKeyUpMod;
        readComputerInput(section, qel, map);
        if (!readText(section, computerInputFormat()["preset"]).empty()) {
            map.useKeyUpMod = useKeyUpMod;
        }
    };
}

} // namespace

ComputerInputSection::ComputerInputSection(QelIF& qel, std::filesystem::path presetFolder,
                                           const std::function<void(const Platform::Fault&)>& reportFault)
    : builtIn_(builtInKeys(qel)),
      presets_({std::move(presetFolder), "ComputerInput"}, computerInputFormat(), readWith(qel), builtIn_),
      reportFault_(reportFault) {
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
    const bool reference = allowReference && presets_.saysAll(*map_, false);
    writeComputerInput(out, depth, *map_, reference ? SectionContent::presetReference : SectionContent::whole);
}

void ComputerInputSection::setChanged(KeyConfigurationMap map) {
    if (!presets_.folder().exists(map.presetName)) {
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
    Platform::Result<KeyConfigurationMap> loaded = presets_.load(name, *map_);
    loaded ? set(std::move(loaded.value())) : reportFault_(loaded.fault());
}

void ComputerInputSection::savePreset(const std::string& name, const std::vector<Key>& keys) {
    std::ostringstream text;
    if (!keys.empty()) {
        writeComputerInput(text, 0, *map_, keys);
        presets_.folder().write(name, text.str(), reportFault_);
        return;
    }
    writeComputerInput(text, 0, *map_);
    if (presets_.folder().write(name, text.str(), reportFault_)) {
        KeyConfigurationMap map = *map_;
        map.presetName = name;
        set(std::move(map));
    }
}

void ComputerInputSection::storePreset(const std::string& name, const KeyConfigurationMap& map) {
    std::ostringstream text;
    writeComputerInput(text, 0, map);
    presets_.folder().write(name, text.str(), reportFault_);
}

void ComputerInputSection::deletePreset(const std::string& name) {
    presets_.folder().remove(name, reportFault_);
}

} // namespace Backend::ComputerInput
