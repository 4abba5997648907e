#include "input/JoystickSection.h"

#include "core/QelIF.h"
#include "platform/Joysticks.h"

#include <optional>
#include <sstream>
#include <utility>

namespace Backend::Joystick {

using ComputerInput::KeyConfiguration;
using ComputerInput::KeyConfigurationMap;

namespace {

const JoystickMap& noJoystick() {
    static const JoystickMap map;
    return map;
}

// A key whose code stands for the button; nothing for a button that there cannot be.
std::optional<Key> keyOf(const JoyButtonElementId& id) {
    constexpr auto buttons = static_cast<std::int32_t>(Platform::JoystickPosition::buttonCount);
    if (id.joystick < 0 || id.joystick >= static_cast<std::int32_t>(Platform::joystickCount) || id.button < 0 ||
        id.button >= buttons) {
        return std::nullopt;
    }
    return Key(static_cast<std::uint32_t>(1 + id.joystick * buttons + id.button));
}

ComputerInput::PressedKeys::Map asKeys(const JoystickMap& map) {
    auto keys = std::make_shared<KeyConfigurationMap>();
    for (const auto& [id, configuration] : map.buttons) {
        if (const std::optional<Key> key = keyOf(id)) {
            keys->store(*key, KeyConfiguration{*key, configuration.entries});
        }
    }
    return keys;
}

} // namespace

JoystickSection::JoystickSection(QelIF& qel, std::filesystem::path presetFolder,
                                 const std::function<void(const Platform::Fault&)>& reportFault)
    : qel_(qel), reportFault_(reportFault),
      presets_(
          {std::move(presetFolder), "Joystick"}, joystickFormat(),
          [&qel](const Platform::XmlElement& section, JoystickMap& map) { readJoystick(section, qel, map); },
          noJoystick()),
      buttonKeys_(asKeys(map_)) {}

void JoystickSection::axisChanged(const JoyAxisElementId& axis, std::int32_t position) {
    const AxisConfiguration* configuration = map_.axes.find(axis);
    if (configuration == nullptr) {
        return;
    }
    for (const AxisEvent& event : configuration->events) {
        if (event.event.canBeSent()) {
            qel_.playMidi(event.at(position));
        }
    }
}

void JoystickSection::buttonDown(const JoyButtonElementId& button, bool repeat) {
    if (const std::optional<Key> key = keyOf(button)) {
        pressed_.down(*key, repeat, buttonKeys_);
    }
}

void JoystickSection::buttonUp(const JoyButtonElementId& button) {
    if (const std::optional<Key> key = keyOf(button)) {
        pressed_.up(*key, buttonKeys_);
    }
}

void JoystickSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, map_));
}

void JoystickSection::write(std::ostream& out, int depth, bool allowReference) const {
    if (allowReference && presets_.saysAll(map_, isChanged_)) {
        writeJoystickReference(out, depth, map_);
    } else {
        writeJoystick(out, depth, map_);
    }
}

void JoystickSection::set(JoystickMap map) {
    map_ = std::move(map);
    buttonKeys_ = asKeys(map_);
    ++revision_;
    isChanged_ = false;
}

void JoystickSection::put(const JoystickMap& elements) {
    JoystickMap map = map_;
    map.merge(elements);
    set(std::move(map));
    isChanged_ = true;
}

void JoystickSection::loadPreset(const std::string& name) {
    Platform::Result<JoystickMap> loaded = presets_.load(name, map_);
    if (!loaded) {
        reportFault_(loaded.fault());
        return;
    }
    set(std::move(loaded.value()));
}

void JoystickSection::savePreset(const std::string& name, const JoystickSelection& selection) {
    std::ostringstream text;
    if (!selection.isEmpty()) {
        writeJoystick(text, 0, map_, selection);
        presets_.folder().write(name, text.str(), reportFault_);
        return;
    }
    writeJoystick(text, 0, map_);
    if (presets_.folder().write(name, text.str(), reportFault_)) {
        map_.presetName = name;
        isChanged_ = false;
        ++revision_;
    }
}

void JoystickSection::storePreset(const std::string& name, const JoystickMap& map) {
    std::ostringstream text;
    writeJoystick(text, 0, map);
    presets_.folder().write(name, text.str(), reportFault_);
}

void JoystickSection::deletePreset(const std::string& name) {
    presets_.folder().remove(name, reportFault_);
}

} // namespace Backend::Joystick
