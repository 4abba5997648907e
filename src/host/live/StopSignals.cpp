#include "host/live/StopSignals.h"

#include "host/live/StopSignalNumbers.h"

#include <atomic>
#include <csignal>

namespace Host {

namespace {

// Signal handlers know nothing else.
std::atomic<Platform::AutoResetEvent*> wakeOnSignal = nullptr;
std::atomic<bool> asked = false;

void note(int number) {
    std::signal(number, note); // some systems forget the handler
    asked.store(true);
    if (Platform::AutoResetEvent* const wake = wakeOnSignal.load()) {
        wake->signal();
    }
}

} // namespace

StopSignals::StopSignals(Platform::AutoResetEvent& wake) {
    asked.store(false);
    wakeOnSignal.store(&wake);
    for (const int number : stopSignalNumbers()) {
        std::signal(number, note);
    }
}

StopSignals::~StopSignals() {
    for (const int number : stopSignalNumbers()) {
        std::signal(number, SIG_DFL);
    }
    wakeOnSignal.store(nullptr);
}

bool StopSignals::wasAsked() const noexcept {
    return asked.load();
}

} // namespace Host
