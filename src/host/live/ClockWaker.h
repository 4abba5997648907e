// How other threads wake a clock that sleeps, at next to no cost while it does not.
#pragma once

#include "platform/AutoResetEvent.h"

#include <atomic>

namespace Host {

// One thread, the clock, takes and sleeps; any thread tells.
class ClockWaker final {
public:
    // Something has arrived that a sleeping clock wants to know of while it awaits arrivals. [any]
    void tellArrival() noexcept {
        arrived_.store(true);
        if (awaitsArrivals_.load()) {
            event_.signal();
        }
    }
    // The same, but wakes whatever the clock awaits. [any]
    void tellUrgent() noexcept {
        arrived_.store(true);
        event_.signal();
    }
    // Wakes without an arrival. [any]
    void tell() noexcept { event_.signal(); }

    // True once for all that has arrived before the call. [clock]
    [[nodiscard]] bool takeArrivals() noexcept { return arrived_.exchange(false); }
    // Says that arrivals are awaited, unless one is there already: then false, and the clock must not sleep. The
    // order of both sides' two accesses (sequentially consistent) keeps an arrival from being missed. [clock]
    [[nodiscard]] bool awaitArrivals() noexcept {
        awaitsArrivals_.store(true);
        return !arrived_.load();
    }
    void ignoreArrivals() noexcept { awaitsArrivals_.store(false); } // [clock]

    [[nodiscard]] Platform::AutoResetEvent& event() noexcept { return event_; }

private:
    std::atomic<bool> arrived_ = false;
    std::atomic<bool> awaitsArrivals_ = false;
    Platform::AutoResetEvent event_;
};

} // namespace Host
