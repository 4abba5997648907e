#include "input/ComputerInputSection.h"

#include "input/ComputerInputXml.h"
#include "input/DefaultKeys.h"
#include "values/AttributeReading.h"

#include <sstream>
#include <utility>

namespace Backend::ComputerInput {

using Component::defaultPresetName;
using Platform::XmlElement;

ComputerInputSection::ComputerInputSection(QelIF& qel, std::filesystem::path presetFolder,
                                           const std::function<void(const Platform::Fault&)>& reportFault)
    : qel_(qel), presets_(std::move(presetFolder), "ComputerInput"), reportFault_(reportFault) {
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
    KeyConfigurationMap map;
    readComputerInput(defaultComputerInput(), qel_, map);
    set(std::move(map));
}

void ComputerInputSection::set(KeyConfigurationMap map) {
    map_ = std::make_shared<const KeyConfigurationMap>(std::move(map));
}

Platform::Result<XmlElement> ComputerInputSection::presetOrDefault(const std::string& name) const {
    if (name == defaultPresetName && !presets_.exists(name)) {
        return defaultComputerInput();
    }
    return presets_.read(name);
}

void ComputerInputSection::read(const XmlElement& section) {
    const ElementFormat& format = computerInputFormat();
    KeyConfigurationMap map = copyOfMap();
    map.presetName = readText(section, format["preset"]);
    if (map.presetName.empty()) {
        readComputerInput(section, qel_, map);
        set(std::move(map));
        return;
    }
    Platform::Result<XmlElement> preset = presetOrDefault(map.presetName);
    if (!preset) {
        preset = presetOrDefault(std::string(defaultPresetName));
    }
    KeyConfigurationMap stoodFor;
    readComputerInput(preset ? preset.value() : defaultComputerInput(), qel_, stoodFor);
    KeyConfigurationMap own;
    readComputerInput(section, qel_, own);
    map.beginReading(readBoolean(section, format["merge"]));
    map.useKeyUpMod = stoodFor.useKeyUpMod;
    if (!presets_.exists(map.presetName) && (!own.empty() || !map.empty())) {
        map.presetName.clear(); // the name alone would not give the same section again
    }
    for (const KeyConfigurationMap* source : {&stoodFor, &own}) {
        for (const auto& [key, configuration] : *source) {
            map.store(key, configuration);
        }
    }
    set(std::move(map));
}

bool ComputerInputSection::isWhatItsPresetHolds() const {
    if (!presets_.exists(map_->presetName)) {
        return true;
    }
    const Platform::Result<XmlElement> preset = presets_.read(map_->presetName);
    if (!preset) {
        return false;
    }
    KeyConfigurationMap stored;
    readComputerInput(preset.value(), qel_, stored);
    return stored.useKeyUpMod == map_->useKeyUpMod && stored.hasSameActions(*map_);
}

void ComputerInputSection::write(std::ostream& out, int depth, bool allowReference) const {
    const bool reference = allowReference && !map_->presetName.empty() && isWhatItsPresetHolds();
    writeComputerInput(out, depth, *map_, reference ? SectionContent::presetReference : SectionContent::whole);
}

void ComputerInputSection::put(const std::vector<KeyConfiguration>& configurations) {
    KeyConfigurationMap map = copyOfMap();
    for (const KeyConfiguration& configuration : configurations) {
        map.store(configuration.key, configuration);
    }
    if (!presets_.exists(map.presetName)) {
        map.presetName.clear();
    }
    set(std::move(map));
}

void ComputerInputSection::setUseKeyUpMod(bool on) {
    KeyConfigurationMap map = copyOfMap();
    map.useKeyUpMod = on;
    if (!presets_.exists(map.presetName)) {
        map.presetName.clear();
    }
    set(std::move(map));
}

void ComputerInputSection::loadPreset(const std::string& name) {
    const Platform::Result<XmlElement> section = presetOrDefault(name);
    if (!section) {
        reportFault_(section.fault());
        return;
    }
    KeyConfigurationMap map = copyOfMap();
    readComputerInput(section.value(), qel_, map);
    map.presetName = name;
    set(std::move(map));
}

void ComputerInputSection::savePreset(const std::string& name, const std::vector<Key>& keys) {
    std::ostringstream text;
    if (!keys.empty()) {
        writeComputerInput(text, 0, *map_, keys);
        presets_.write(name, text.str(), reportFault_);
        return;
    }
    writeComputerInput(text, 0, *map_);
    if (presets_.write(name, text.str(), reportFault_)) {
        KeyConfigurationMap map = copyOfMap();
        map.presetName = name;
        set(std::move(map));
    }
}

void ComputerInputSection::storePreset(const std::string& name, const KeyConfigurationMap& map) {
    std::ostringstream text;
    writeComputerInput(text, 0, map);
    presets_.write(name, text.str(), reportFault_);
}

void ComputerInputSection::deletePreset(const std::string& name) {
    presets_.remove(name, reportFault_);
}

} // namespace Backend::ComputerInput
