#include "generators/OscillatorSpeed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Backend::Oscillators {

namespace {

constexpr std::int32_t lastPlace = 127;
constexpr double fastest = 40;
constexpr double slowest = 30720;

// Longest first.
constexpr std::array<std::int32_t, 21> lengths{30720, 15360, 7680, 3840, 2880, 1920, 1440, 1280, 960, 720, 640,
                                               480,   360,   320,  240,  180,  160,  120,  80,   60,  40};

// Of the shortest length that is not below the speed; the longest one for what is slower than all.
std::size_t stepOf(std::int32_t speed) {
    std::size_t step = lengths.size() - 1;
    while (step > 0 && lengths[step] < speed) {
        --step;
    }
    return step;
}

std::int32_t steppedBy(std::int32_t speed, std::int32_t direction) {
    const std::size_t step = stepOf(speed);
    if (direction > 0 && step + 1 < lengths.size()) {
        return lengths[step + 1];
    }
    if (direction < 0 && step > 0) {
        return lengths[step - 1];
    }
    return speed;
}

} // namespace

std::span<const std::int32_t> speedLengths() {
    return lengths;
}

std::int32_t changedSpeed(const Oscillator& oscillator, const RelativeFixedValue& value) {
    if (value.isNoChange()) {
        return oscillator.speed;
    }
    if (!oscillator.steppedSpeed) {
        const std::int32_t place = placeOfSpeed(oscillator.speed);
        const std::int32_t target = std::clamp(value.applyTo(place), 0, lastPlace);
        return value.isRelative() && target == place ? oscillator.speed : scaledSpeed(target);
    }
    return value.isRelative() ? steppedBy(oscillator.speed, value.getValue()) : std::max(value.getValue(), 1);
}

std::int32_t scaledSpeed(std::int32_t place) {
    const double fromFastest = lastPlace - std::clamp(place, 0, lastPlace);
    return static_cast<std::int32_t>(std::lround(fastest * std::pow(slowest / fastest, fromFastest / lastPlace)));
}

std::int32_t placeOfSpeed(std::int32_t speed) {
    const double ratio = std::max(speed, 1) / fastest;
    const auto place =
        static_cast<std::int32_t>(std::lround(lastPlace - lastPlace * std::log(ratio) / std::log(slowest / fastest)));
    return std::clamp(place, 0, lastPlace);
}

} // namespace Backend::Oscillators
