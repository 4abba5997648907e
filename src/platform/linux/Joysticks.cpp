#include "platform/Joysticks.h"

#include "platform/linux/SdlLibrary.h"

#include <algorithm>

namespace Platform {

namespace {

// SDL's axes in its order are the fields of the record in theirs.
class SdlJoysticks final : public Joysticks {
public:
    explicit SdlJoysticks(const SdlLibrary& sdl) : sdl_(sdl) {
        sdl_.setHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
        sdl_.setHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // Ctrl-C is the host's
        sdl_.setHint(SDL_HINT_JOYSTICK_HIDAPI, "0");    // the kernel's joysticks, without drivers of SDL's own
        sdl_.initSubSystem(SDL_INIT_JOYSTICK);
        sdl_.eventState(SDL_IGNORE);
    }
    ~SdlJoysticks() override {
        for (SDL_Joystick*& joystick : open_) {
            close(joystick);
        }
        sdl_.quitSubSystem(SDL_INIT_JOYSTICK);
        if (sdl_.wasInit(0) == 0) { // the last user gives back what SDL and this thread hold
            sdl_.quit();
        }
        sdl_.cleanUpThread();
    }
    SdlJoysticks(const SdlJoysticks&) = delete;
    SdlJoysticks& operator=(const SdlJoysticks&) = delete;

    JoystickPositions read() override {
        sdl_.update();
        sdl_.flushEvents(SDL_JOYAXISMOTION, SDL_JOYDEVICEREMOVED); // nobody else takes the news of comings and goings
        followDevices();
        JoystickPositions positions;
        std::transform(open_.begin(), open_.end(), positions.begin(), [this](SDL_Joystick* joystick) {
            return joystick == nullptr ? std::nullopt : std::optional(positionOf(joystick));
        });
        return positions;
    }

private:
    void close(SDL_Joystick*& joystick) {
        if (joystick != nullptr) {
            sdl_.close(joystick);
            joystick = nullptr;
        }
    }

    void followDevices() {
        for (SDL_Joystick*& joystick : open_) {
            if (joystick != nullptr && sdl_.isAttached(joystick) == SDL_FALSE) {
                close(joystick);
            }
        }
        const int count = sdl_.count();
        for (int device = 0; device < count; ++device) {
            const auto free = std::find(open_.begin(), open_.end(), nullptr);
            if (free == open_.end()) {
                return;
            }
            if (!isOpen(sdl_.instanceOfDevice(device))) {
                *free = sdl_.open(device);
            }
        }
    }

    [[nodiscard]] bool isOpen(SDL_JoystickID instance) const {
        return std::any_of(open_.begin(), open_.end(), [&](SDL_Joystick* joystick) {
            return joystick != nullptr && sdl_.instanceOf(joystick) == instance;
        });
    }

    [[nodiscard]] JoystickPosition positionOf(SDL_Joystick* joystick) const {
        constexpr int lowest = SDL_JOYSTICK_AXIS_MIN;
        JoystickPosition position;
        const int axes = sdl_.axisCount(joystick);
        for (std::size_t i = 0; i < position.axes.size(); ++i) {
            const int axis = static_cast<int>(i);
            position.axes[i] = static_cast<std::uint16_t>((axis < axes ? sdl_.axis(joystick, axis) : 0) - lowest);
        }
        const int buttons = std::min(sdl_.buttonCount(joystick), static_cast<int>(JoystickPosition::buttonCount));
        for (int i = 0; i < buttons; ++i) {
            position.buttons |= sdl_.button(joystick, i) != 0 ? std::uint32_t{1} << i : 0;
        }
        return position;
    }

    const SdlLibrary& sdl_;
    std::array<SDL_Joystick*, joystickCount> open_{};
};

class NoJoysticks final : public Joysticks {
public:
    JoystickPositions read() override { return {}; }
};

} // namespace

std::unique_ptr<Joysticks> openJoysticks() {
    const SdlLibrary* const sdl = SdlLibrary::get();
    if (sdl == nullptr) {
        return std::make_unique<NoJoysticks>();
    }
    return std::make_unique<SdlJoysticks>(*sdl);
}

} // namespace Platform
