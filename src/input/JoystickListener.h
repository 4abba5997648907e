// Who is told what the joysticks do.
#pragma once

#include "values/JoyAxisElementId.h"
#include "values/JoyButtonElementId.h"

#include <cstdint>

namespace Backend::Joystick {

// [the polling thread]
class JoystickListener {
public:
    // `value` is the position as it is to be scaled, 0..65535.
    virtual void axisChanged(const JoyAxisElementId& axis, std::int32_t value) = 0;
    // `repeat`: the button has been down.
    virtual void buttonDown(const JoyButtonElementId& button, bool repeat) = 0;
    virtual void buttonUp(const JoyButtonElementId& button) = 0;

protected:
    ~JoystickListener() = default;
};

} // namespace Backend::Joystick
