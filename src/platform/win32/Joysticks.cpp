#include "platform/Joysticks.h"

#include "platform/Clocks.h"

#include <algorithm>
// clang-format off
#include <windows.h> // before what needs it
#include <mmsystem.h>
// clang-format on

// In the system's library, but in none of the compiler's headers: makes it look at what is plugged in.
extern "C" __declspec(dllimport) MMRESULT WINAPI joyConfigChanged(DWORD flags);

namespace Platform {

namespace {

// Asking for a joystick that is not there can take the system many milliseconds.
constexpr std::chrono::nanoseconds betweenSearches = std::chrono::seconds(1);

class WinmmJoysticks final : public Joysticks {
public:
    JoystickPositions read() override {
        const std::chrono::nanoseconds now = monotonicTime();
        const bool search = !hasSearched_ || now - lastSearch_ >= betweenSearches;
        if (search) {
            if (hasSearched_ && std::find(present_.begin(), present_.end(), false) != present_.end()) {
                joyConfigChanged(0);
            }
            hasSearched_ = true;
            lastSearch_ = now;
        }
        JoystickPositions positions;
        const auto count = std::min<std::size_t>(joyGetNumDevs(), joystickCount);
        for (std::size_t i = 0; i < joystickCount; ++i) {
            if (i < count && (present_[i] || search)) {
                positions[i] = read(static_cast<UINT>(i));
            }
            present_[i] = positions[i].has_value();
        }
        return positions;
    }

private:
    static std::optional<JoystickPosition> read(UINT joystick) {
        JOYINFOEX state{};
        state.dwSize = sizeof state;
        state.dwFlags = JOY_RETURNALL;
        if (joyGetPosEx(joystick, &state) != JOYERR_NOERROR) {
            return std::nullopt;
        }
        const auto axis = [](DWORD raw) { return static_cast<std::uint16_t>(std::min<DWORD>(raw, 0xFFFF)); };
        return JoystickPosition{{axis(state.dwXpos), axis(state.dwYpos), axis(state.dwZpos), axis(state.dwRpos),
                                 axis(state.dwUpos), axis(state.dwVpos)},
                                state.dwButtons};
    }

    std::array<bool, joystickCount> present_{};
    std::chrono::nanoseconds lastSearch_{};
    bool hasSearched_ = false;
};

static_assert(sizeof(JOYINFOEX) == 52);

} // namespace

std::unique_ptr<Joysticks> openJoysticks() {
    return std::make_unique<WinmmJoysticks>();
}

} // namespace Platform
