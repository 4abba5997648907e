#include "platform/AutoResetEvent.h"

#include "platform/Clocks.h"
#include "platform/win32/Handle.h"

#include <algorithm>
#include <system_error>

namespace Platform {

struct AutoResetEvent::State {
    Handle event{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
};

AutoResetEvent::AutoResetEvent() : state_(std::make_unique<State>()) {
    if (!state_->event.isValid()) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
}
AutoResetEvent::~AutoResetEvent() = default;

void AutoResetEvent::signal() noexcept {
    SetEvent(state_->event.get());
}

void AutoResetEvent::wait() noexcept {
    WaitForSingleObject(state_->event.get(), INFINITE);
}

bool AutoResetEvent::waitFor(std::chrono::nanoseconds time) noexcept {
    const auto start = monotonicTime();
    for (;;) {
        // The system waits in whole milliseconds, and may return up to a timer tick early.
        const auto left = std::max(time - (monotonicTime() - start), std::chrono::nanoseconds::zero());
        const auto whole = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        const auto wait = static_cast<DWORD>(std::min<std::int64_t>(whole, INFINITE - 1));
        if (WaitForSingleObject(state_->event.get(), wait) == WAIT_OBJECT_0) {
            return true;
        }
        if (monotonicTime() - start >= time) {
            return false;
        }
    }
}

} // namespace Platform
