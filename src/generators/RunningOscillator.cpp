#include "generators/RunningOscillator.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace Backend::Oscillators {

namespace {

constexpr double pi = std::numbers::pi;
// After weeks of the fastest waves; beyond, phases lose their fractions.
constexpr double largestPhase = 1e15;
constexpr std::int32_t largestData = 127;
constexpr std::int32_t largestBend = 16383;

std::int64_t rounded(double value) {
    return static_cast<std::int64_t>(std::floor(value + 0.5));
}

std::int64_t parity(double phase) {
    return static_cast<std::int64_t>(phase) % 2;
}

} // namespace

RunningOscillator::RunningOscillator(const Oscillator& oscillator)
    : settings_(oscillator), random_(static_cast<std::uint32_t>(oscillator.id)),
      low_(std::min(oscillator.min, oscillator.max)), range_(std::abs(std::int64_t{oscillator.max} - oscillator.min)),
      isInverted_(oscillator.max < oscillator.min),
      isContinuous_(oscillator.type != OscillatorType::pulse && oscillator.type != OscillatorType::random) {}

std::optional<RunningOscillator::Step> RunningOscillator::advance(Ticks now) {
    const std::int32_t delta = lastTime_ != noTicks && now > lastTime_ ? (now - lastTime_).count : 1;
    lastTime_ = now;
    const double before = phase_;
    phase_ += increment() / std::max(settings_.speed, 1) * delta;
    if (phase_ > largestPhase) {
        phase_ = std::fmod(phase_, 2 * increment()); // all waves begin again after two periods
    }
    if (settings_.type == OscillatorType::random && parity(phase_) == parity(before)) {
        return std::nullopt; // it holds its value, mirrored or not
    }
    std::int64_t value = valueAt(phase_);
    if (isInverted_) {
        // A mirrored saw stands one lower than the mirror image: deliberate, stored programs rely on it.
        value = range_ - (settings_.type == OscillatorType::saw ? 1 : 0) + 2 * low_ - value;
    }
    if (value == lastSent_) {
        return std::nullopt;
    }
    ++changes_;
    const std::int64_t detail = std::max(settings_.detail, 1);
    if (isContinuous_ && changes_ % detail != 0) {
        return std::nullopt;
    }
    lastSent_ = value;
    return Step{static_cast<std::int32_t>(value), !isContinuous_ || changes_ % (2 * detail) == 0};
}

// What the phase grows by in a period.
double RunningOscillator::increment() const {
    switch (settings_.type) {
    case OscillatorType::pulse:
        return 2.0;
    case OscillatorType::random:
        return 1.0;
    case OscillatorType::saw:
        return static_cast<double>(range_ + 1);
    case OscillatorType::sine:
    case OscillatorType::triangle:
    case OscillatorType::unknown:
        break;
    }
    return 2 * pi;
}

std::int64_t RunningOscillator::valueAt(double phase) {
    const auto low = static_cast<double>(low_);
    const auto range = static_cast<double>(range_);
    switch (settings_.type) {
    case OscillatorType::pulse:
        return parity(phase) * range_ + low_;
    case OscillatorType::random:
        return rounded(low + random_.next() * (range / RandomNumbers::largest));
    case OscillatorType::saw:
        return rounded(phase) % (range_ + 1) + low_;
    case OscillatorType::triangle:
        return rounded((std::asin(std::sin(phase)) + pi / 2) / pi * range + low);
    case OscillatorType::sine:
    case OscillatorType::unknown:
        break;
    }
    return rounded((std::sin(phase) + 1) * 0.5 * range + low);
}

MidiEngine::QelMidiMessage RunningOscillator::messageOf(std::int32_t value) const {
    MidiEngine::QelMidiMessage message(settings_.midiMessage, settings_.output, settings_.channel, settings_.zone, {});
    if (message.isPitchBend()) {
        const std::int32_t bend = std::clamp(value, 0, largestBend);
        message.setD1(static_cast<std::int8_t>(bend & 0x7F));
        message.setD2(static_cast<std::int8_t>(bend >> 7));
        return message;
    }
    const auto data = static_cast<std::int8_t>(std::clamp(value, 0, largestData));
    message.isControllerChange() ? message.setD2(data) : message.setD1(data);
    return message;
}

} // namespace Backend::Oscillators
