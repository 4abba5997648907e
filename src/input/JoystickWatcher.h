// Makes events of what differs from one look at the joysticks to the next.
#pragma once

#include "input/JoystickListener.h"
#include "platform/Joysticks.h"

#include <array>
#include <cstdint>
#include <optional>

namespace Backend::Joystick {

// The first look at a joystick is only remembered, be it at the start or when it is plugged in later; what is down then
// does not repeat. The buttons of one that is pulled out come up. Within a look: joystick by joystick, the axes, then
// the buttons, each by number.
class JoystickWatcher final {
public:
    // A held button repeats from this long after its press on ...
    static constexpr std::uint32_t REPEAT_DELAY_MILLISECONDS = 500;
    // ... and again whenever more than this has passed since the last time: as a computer keyboard does.
    static constexpr std::uint32_t REPEAT_INTERVAL_MILLISECONDS = 30;

    // What is passed on of a raw position, 0..65535: the fields Y and U of the record, axes 1 and 4, are mirrored,
    // deliberately: stored files rely on it.
    [[nodiscard]] static std::int32_t axisValue(std::int32_t axis, std::int32_t raw) noexcept;

    // The listener outlives the watcher.
    explicit JoystickWatcher(JoystickListener& listener) : listener_(listener) {}

    // `milliseconds`: a clock that wraps at 32 bits.
    void look(const Platform::JoystickPositions& positions, std::uint32_t milliseconds);

private:
    struct Hold {
        std::uint32_t pressed = 0;
        std::optional<std::uint32_t> repeated;
    };
    struct Watched {
        std::optional<Platform::JoystickPosition> position;
        std::array<std::optional<Hold>, Platform::JoystickPosition::buttonCount> holds; // of presses that were seen
    };

    void follow(std::int32_t joystick, Watched& before, const Platform::JoystickPosition& now,
                std::uint32_t milliseconds);
    void followButton(const JoyButtonElementId& button, std::optional<Hold>& hold, bool wasDown, bool isDown,
                      std::uint32_t milliseconds);

    JoystickListener& listener_;
    std::array<Watched, Platform::joystickCount> watched_;
};

} // namespace Backend::Joystick
