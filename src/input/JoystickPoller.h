// The thread that looks at the joysticks.
#pragma once

#include "input/JoystickListener.h"
#include "platform/Joysticks.h"
#include "platform/Threads.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace Backend::Joystick {

// What the polling thread goes by; tests have a time of their own.
struct PollingTime {
    std::function<std::uint32_t()> milliseconds; // a clock that wraps at 32 bits
    std::function<void(unsigned)> sleep;         // for that many milliseconds
};

// Opens the joysticks on its own thread, so that nobody waits for them, and looks at them every 10 ms.
class JoystickPoller final {
public:
    using Open = std::function<std::unique_ptr<Platform::Joysticks>()>;
    static constexpr unsigned CYCLE_MILLISECONDS = 10;

    // Starts the thread. The listener outlives the poller; it is called on the thread.
    JoystickPoller(Open open, JoystickListener& listener, PollingTime time);
    // Waits until the thread has ended: a cycle at most, or what the listener takes.
    ~JoystickPoller();
    JoystickPoller(const JoystickPoller&) = delete;
    JoystickPoller& operator=(const JoystickPoller&) = delete;

private:
    void run();

    Open open_;
    JoystickListener& listener_;
    PollingTime time_;
    std::atomic<bool> stop_ = false;
    Platform::Thread thread_;
};

} // namespace Backend::Joystick
