#include "host/live/RoadMeter.h"

#include <algorithm>
#include <numeric>

namespace Host {

namespace {
constexpr double nanosecondsPerMillisecond = 1e6;
}

bool RoadMeter::begin() noexcept {
    State idle = State::idle;
    if (!state_.compare_exchange_strong(idle, State::onItsWay)) {
        return false;
    }
    began_.store(time_.now().count());
    return true;
}

void RoadMeter::reachedEngine() noexcept {
    state_.store(State::atEngine);
}

void RoadMeter::arrive() noexcept {
    const std::size_t count = count_.load(std::memory_order_relaxed);
    latest_[count % latest_.size()].store(time_.now().count() - began_.load());
    count_.store(count + 1);
    state_.store(State::idle);
}

RoadMeter::Reading RoadMeter::reading(std::chrono::nanoseconds even) const noexcept {
    const std::size_t count = std::min(count_.load(), latest_.size());
    if (count == 0) {
        return {};
    }
    std::array<std::int64_t, std::tuple_size_v<decltype(latest_)>> times{};
    for (std::size_t i = 0; i < count; ++i) {
        times[i] = latest_[i].load();
    }
    const auto end = times.begin() + static_cast<std::ptrdiff_t>(count);
    const auto [shortest, longest] = std::minmax_element(times.begin(), end);
    if (even.count() > 0) {
        return {static_cast<double>(even.count()) / nanosecondsPerMillisecond,
                static_cast<double>(std::max<std::int64_t>(0, *longest - even.count())) / nanosecondsPerMillisecond};
    }
    const std::int64_t sum = std::accumulate(times.begin(), end, std::int64_t{0});
    return {static_cast<double>(sum) / static_cast<double>(count) / nanosecondsPerMillisecond,
            static_cast<double>(*longest - *shortest) / nanosecondsPerMillisecond};
}

} // namespace Host
