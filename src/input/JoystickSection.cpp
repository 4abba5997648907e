#include "input/JoystickSection.h"

#include "core/QelIF.h"
#include "platform/Joysticks.h"

#include <optional>
#include <utility>

namespace Backend::Joystick {

using ComputerInput::KeyConfiguration;
using ComputerInput::KeyConfigurationMap;

namespace {

const JoystickMap& noJoystick() {
    static const JoystickMap map;
    return map;
}

Component::SectionText<JoystickMap, JoystickSelection> sectionText(QelIF& qel) {
    return {[&qel](const Platform::XmlElement& section, JoystickMap& map) { readJoystick(section, qel, map); },
            [](std::ostream& out, int depth, const JoystickMap& map) { writeJoystick(out, depth, map); },
            [](std::ostream& out, const JoystickMap& map, const JoystickSelection& selection) {
                writeJoystick(out, 0, map, selection);
            }};
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
    : qel_(qel), presets_(std::move(presetFolder), joystickFormat(), sectionText(qel), noJoystick(), reportFault),
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
    presets_.writeSection(out, depth, map_, isChanged_, allowReference);
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
    if (auto loaded = presets_.load(name, map_)) {
        set(std::move(*loaded));
    }
}

void JoystickSection::savePreset(const std::string& name, const JoystickSelection& selection) {
    if (presets_.save(name, map_, selection)) {
        map_.presetName = name;
        isChanged_ = false;
        ++revision_;
    }
}

} // namespace Backend::Joystick
