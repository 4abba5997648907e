// Joysticks, each as one position record: six axes and 32 buttons.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace Platform {

struct JoystickPosition {
    static constexpr std::size_t axisCount = 6;
    static constexpr std::size_t buttonCount = 32;

    // The fields X, Y, Z, R, U, V in this order, 0 (left, up) to 65535; about 32768 is the centre. An axis that the
    // device does not have never moves.
    std::array<std::uint16_t, axisCount> axes{};
    std::uint32_t buttons = 0; // bit n: button n is down

    bool operator==(const JoystickPosition&) const = default;
};

inline constexpr std::size_t joystickCount = 2;
// Joysticks 0 and 1; nothing for one that is not there.
using JoystickPositions = std::array<std::optional<JoystickPosition>, joystickCount>;

// The first two joysticks of the machine. One that is plugged in later is found too, within a second, under a number
// that is free; that of one that has been pulled out is free again. All on one thread, which need not have a window;
// positions are read whoever has the keyboard.
class Joysticks {
public:
    virtual ~Joysticks() = default;
    // Where they are now. Does not wait for a joystick to move.
    [[nodiscard]] virtual JoystickPositions read() = 0;
};

// The system's joysticks; none ever where it has no such service. May take a while: not for a thread that is waited
// for. One at a time.
[[nodiscard]] std::unique_ptr<Joysticks> openJoysticks();

} // namespace Platform
