#include "platform/AutoResetEvent.h"

#include "platform/Clocks.h"
#include "platform/linux/Futex.h"

namespace Platform {
namespace {

// All of the event in one word, so that the signalling thread touches nothing after its signal has released a
// waiter: that waiter may destroy the event at once.
// A signal that finds a waiter without a grant grants it the way on; else it leaves the signalled mark.
struct Content {
    static constexpr std::uint32_t oneWaiter = 1U << 1;
    static constexpr std::uint32_t oneGrant = 1U << 16;

    std::uint32_t word;

    bool isSignalled() const { return (word & 1U) != 0; }
    std::uint32_t waiters() const { return (word >> 1) & 0x7FFFU; }
    std::uint32_t grants() const { return word >> 16; }
};

} // namespace

struct AutoResetEvent::State {
    std::atomic<std::uint32_t> word{0};

    bool wait(std::optional<std::chrono::nanoseconds> deadline) noexcept;
    // Joins the waiters, or takes the mark: then true.
    bool takeMarkOrJoin() noexcept;
    // Leaves the waiters with a grant, if there is one.
    bool takeGrant() noexcept;
    // Leaves the waiters; true when every waiter had its grant already, this one's included.
    bool leave() noexcept;
};

bool AutoResetEvent::State::takeMarkOrJoin() noexcept {
    std::uint32_t seen = word.load(std::memory_order_relaxed);
    for (;;) {
        const bool signalled = Content{seen}.isSignalled();
        const std::uint32_t next = signalled ? seen & ~1U : seen + Content::oneWaiter;
        if (word.compare_exchange_weak(seen, next, std::memory_order_acquire, std::memory_order_relaxed)) {
            return signalled;
        }
    }
}

bool AutoResetEvent::State::takeGrant() noexcept {
    std::uint32_t seen = word.load(std::memory_order_relaxed);
    while (Content{seen}.grants() > 0) {
        if (word.compare_exchange_weak(seen, seen - Content::oneGrant - Content::oneWaiter, std::memory_order_acquire,
                                       std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

bool AutoResetEvent::State::leave() noexcept {
    std::uint32_t seen = word.load(std::memory_order_relaxed);
    for (;;) {
        const bool granted = Content{seen}.waiters() == Content{seen}.grants();
        const std::uint32_t next = seen - Content::oneWaiter - (granted ? Content::oneGrant : 0U);
        if (word.compare_exchange_weak(seen, next, std::memory_order_acquire, std::memory_order_relaxed)) {
            return granted;
        }
    }
}

bool AutoResetEvent::State::wait(std::optional<std::chrono::nanoseconds> deadline) noexcept {
    if (takeMarkOrJoin()) {
        return true;
    }
    for (;;) {
        if (takeGrant()) {
            return true;
        }
        const std::uint32_t seen = word.load(std::memory_order_relaxed);
        if (Content{seen}.grants() == 0 && !futexWait(word, seen, deadline)) {
            return leave();
        }
    }
}

AutoResetEvent::AutoResetEvent() : state_(std::make_unique<State>()) {}
AutoResetEvent::~AutoResetEvent() = default;

void AutoResetEvent::signal() noexcept {
    std::atomic<std::uint32_t>& word = state_->word;
    std::uint32_t seen = word.load(std::memory_order_relaxed);
    for (;;) {
        const bool hand = Content{seen}.waiters() > Content{seen}.grants();
        const std::uint32_t next = hand ? seen + Content::oneGrant : seen | 1U;
        if (word.compare_exchange_weak(seen, next, std::memory_order_release, std::memory_order_relaxed)) {
            if (hand) {
                futexWakeOne(word);
            }
            return;
        }
    }
}

void AutoResetEvent::wait() noexcept {
    static_cast<void>(state_->wait({}));
}

bool AutoResetEvent::waitFor(std::chrono::nanoseconds time) noexcept {
    const auto now = monotonicTime();
    const auto longest = std::chrono::nanoseconds::max() - now;
    return state_->wait(now + (time < std::chrono::nanoseconds::zero() ? std::chrono::nanoseconds::zero()
                               : time > longest                        ? longest
                                                                       : time));
}

} // namespace Platform
