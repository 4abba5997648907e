// What the joysticks do, and how they stand.
#pragma once

#include "desktop/models/Model.h"
#include "desktop/models/Underway.h"
#include "input/JoystickMap.h"

#include <QString>
#include <array>
#include <cstdint>

namespace Desktop {

class Models;

class JoystickModel final : public Model {
    Q_OBJECT

public:
    static constexpr int joysticks = 2;
    static constexpr int axes = 6;
    static constexpr int buttons = 32;

    explicit JoystickModel(Models& models);

    [[nodiscard]] const Backend::Joystick::JoystickMap& map() const { return map_; }
    [[nodiscard]] int position(int joystick, int axis) const; // 0..65535; the middle before it has moved
    [[nodiscard]] bool isDown(int joystick, int button) const;

    // Edits, which can be undone. Those of one gesture are one.
    void putAxis(const Backend::Joystick::AxisConfiguration& axis);
    void putButton(const Backend::Joystick::JoystickButtonConfiguration& button);
    void loadPreset(const std::string& name);

signals:
    void moved();

private:
    struct Snapshot {
        Backend::Joystick::JoystickMap map;
        friend bool operator==(const Snapshot& a, const Snapshot& b) {
            return a.map.axes.hasSameElements(b.map.axes) && a.map.buttons.hasSameElements(b.map.buttons);
        }
    };

    void apply(const Backend::Joystick::JoystickMap& map);
    void edit(const QString& text, Backend::Joystick::JoystickMap after);

    Models& models_;
    Backend::Joystick::JoystickMap map_;
    Underway<Snapshot> underway_;
    std::array<std::array<int, axes>, joysticks> positions_;
    std::array<std::uint32_t, joysticks> down_{};
};

} // namespace Desktop
