// The joysticks of the current program.
#pragma once

#include "input/JoystickMap.h"
#include "input/JoystickXml.h"
#include "input/PressedKeys.h"
#include "input/SectionPresets.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

namespace Backend {
class QelIF;
}

namespace Backend::Joystick {

// Starts empty. Buttons are held, repeat and come up as keys without modifiers do (PressedKeys): a held one keeps what
// it went down with, whatever becomes of the map. [backend]
class JoystickSection final {
public:
    // The references outlive the section.
    JoystickSection(QelIF& qel, std::filesystem::path presetFolder,
                    const std::function<void(const Platform::Fault&)>& reportFault);

    [[nodiscard]] const JoystickMap& map() const { return map_; }
    // Another number after each change.
    [[nodiscard]] std::uint32_t revision() const { return revision_; }

    // What the joysticks do. `position` 0..65535 as JoystickListener gives it.
    void axisChanged(const JoyAxisElementId& axis, std::int32_t position);
    void buttonDown(const JoyButtonElementId& button, bool repeat);
    void buttonUp(const JoyButtonElementId& button);

    // Whole sections.

    void setDefault() { set({}); }
    // A section of a program, which may stand for a preset (SectionPresets).
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section that its preset says all of is written as the name of the preset.
    void write(std::ostream& out, int depth, bool allowReference) const;
    void set(JoystickMap map);

    // Adds axes and buttons or replaces those with their ids.
    void put(const JoystickMap& elements);

    // Presets, by name.

    // What cannot be read is reported and changes nothing.
    void loadPreset(const std::string& name);
    // With a selection only that, to be merged. A file that cannot be written changes nothing, without a word.
    void savePreset(const std::string& name, const JoystickSelection& selection);
    void storePreset(const std::string& name, const JoystickMap& map) { presets_.store(name, map); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

private:
    QelIF& qel_;
    Component::SectionPresets<JoystickMap, JoystickSelection> presets_;
    JoystickMap map_;
    std::uint32_t revision_ = 0;
    bool isChanged_ = false;                     // since it was read as a whole
    ComputerInput::PressedKeys::Map buttonKeys_; // the buttons of map_ as keys
    ComputerInput::PressedKeys pressed_;
};

} // namespace Backend::Joystick
