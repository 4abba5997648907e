#include "input/JoystickPoller.h"

#include "input/JoystickWatcher.h"

#include <utility>

namespace Backend::Joystick {

JoystickPoller::JoystickPoller(Open open, JoystickListener& listener, PollingTime time)
    : open_(std::move(open)), listener_(listener), time_(std::move(time)), thread_([this] { run(); }) {
    thread_.resume();
}

JoystickPoller::~JoystickPoller() {
    stop_ = true;
    thread_.join();
}

void JoystickPoller::run() {
    Platform::setCurrentThreadName("tembrel-joystick");
    const std::unique_ptr<Platform::Joysticks> joysticks = open_();
    JoystickWatcher watcher(listener_);
    while (!stop_) {
        watcher.look(joysticks->read(), time_.milliseconds());
        time_.sleep(CYCLE_MILLISECONDS);
    }
}

} // namespace Backend::Joystick
