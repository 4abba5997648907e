// Brings the values of playing oscillators from the clock to the backend's thread.
#pragma once

#include "generators/OscList.h"
#include "generators/OscillatorWatcher.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace Backend::Oscillators {

// Each oscillator has a place for its latest value: nothing grows, and the clock neither allocates nor waits.
class OscillatorNotices final : public OscillatorWatcher {
public:
    // `wake` is called on the clock thread when there is something to drain, and not again before the next drain() once
    // it has said true. It must not block.
    explicit OscillatorNotices(std::function<bool()> wake) : wake_(std::move(wake)) {}

    void oscillatorMoved(OscId id, std::int32_t value) override {
        const auto place = static_cast<std::size_t>(id.index);
        if (place >= values_.size()) {
            return;
        }
        values_[place].store(validBit | static_cast<std::uint32_t>(value));
        if (!isAwake_.exchange(true) && !wake_()) {
            isAwake_ = false;
        }
    }

    // Gives `take` the id and the latest value of each oscillator that has moved since the last time. [backend]
    template <typename Take> void drain(Take take) {
        isAwake_ = false;
        for (std::size_t place = 0; place < values_.size(); ++place) {
            if (values_[place].load(std::memory_order_relaxed) == nothing) {
                continue;
            }
            if (const std::uint64_t packed = values_[place].exchange(nothing)) {
                take(OscId{static_cast<std::int32_t>(place)}, static_cast<std::int32_t>(packed & 0xFFFF'FFFF));
            }
        }
    }

private:
    static constexpr std::uint64_t nothing = 0;
    static constexpr std::uint64_t validBit = std::uint64_t{1} << 63;

    std::function<bool()> wake_;
    std::array<std::atomic<std::uint64_t>, OscList::maxSize> values_{};
    std::atomic<bool> isAwake_ = false;
};

} // namespace Backend::Oscillators
