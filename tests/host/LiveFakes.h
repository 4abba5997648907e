// An engine and a time for clocks under test.
#pragma once

#include "host/live/ClockedEngine.h"
#include "host/live/TimeSource.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Host {

// Time that passes only while a clock sleeps. Actions happen at their times, in the sleeper's thread.
class VirtualTime final : public TimeSource {
public:
    [[nodiscard]] std::chrono::nanoseconds now() noexcept override { return now_; }
    void sleepUntil(std::chrono::nanoseconds time, Platform::AutoResetEvent& event) noexcept override {
        if (event.waitFor(std::chrono::nanoseconds::zero())) {
            return;
        }
        if (!actions_.empty() && actions_.begin()->first < time) {
            now_ = std::max(now_, actions_.begin()->first);
            const auto action = actions_.begin()->second;
            actions_.erase(actions_.begin());
            action();
            return; // whether woken or not: clocks bear being woken for nothing
        }
        now_ = std::max(now_, time);
    }
    void at(std::chrono::nanoseconds time, std::function<void()> action) { actions_.emplace(time, std::move(action)); }
    void pass(std::chrono::nanoseconds time) { now_ += time; }

private:
    std::chrono::nanoseconds now_{1'000'000};
    std::multimap<std::chrono::nanoseconds, std::function<void()>> actions_;
};

// Knows the rules of slices as the real engine does: what is pending is taken in and stamped, ticks play what is
// stamped for them or earlier.
class FakeEngine final : public ClockedEngine {
public:
    struct Played {
        std::string what;
        std::int32_t tick;
        std::chrono::nanoseconds time;
    };

    explicit FakeEngine(TimeSource& time) : time_(time) {}

    void post(const std::string& what) { inbox.push_back(what); }

    void playTimeSlice(Backend::Ticks from, Backend::Ticks to) override {
        for (const std::string& what : inbox) {
            stamped_.emplace(to.count, what);
        }
        inbox.clear();
        slices.push_back({from.count, to.count});
        if (from == to || to.count - from.count >= 5000) {
            return;
        }
        for (std::int32_t tick = from.count; tick < to.count; ++tick) {
            if (dependent || ticks.empty() || ticks.back() != tick) {
                ticks.push_back(tick);
                tickTimes.push_back(time_.now());
            }
            for (; !stamped_.empty() && stamped_.begin()->first <= tick; stamped_.erase(stamped_.begin())) {
                played.push_back({stamped_.begin()->second, tick, time_.now()});
            }
            if (onTick) {
                onTick(tick);
            }
        }
    }
    [[nodiscard]] bool isTickDependent() override { return dependent; }
    void timeJumped() override { ++jumps; }

    bool dependent = false;
    int jumps = 0;
    std::function<void(std::int32_t tick)> onTick;
    std::vector<std::string> inbox;
    std::vector<std::pair<std::int32_t, std::int32_t>> slices;
    std::vector<std::int32_t> ticks; // run, repetitions of an independent one left out
    std::vector<std::chrono::nanoseconds> tickTimes;
    std::vector<Played> played;

private:
    TimeSource& time_;
    std::multimap<std::int32_t, std::string> stamped_;
};

} // namespace Host
