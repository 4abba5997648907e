// An oscillator on its way through its wave.
#pragma once

#include "generators/Oscillator.h"
#include "generators/RandomNumbers.h"
#include "values/Ticks.h"

#include <cstdint>
#include <optional>

namespace Backend::Oscillators {

// Neither allocates nor fails. Stopped and started again it goes on where it was. [clock]
class RunningOscillator final {
public:
    // Random numbers are those of the oscillator's id.
    explicit RunningOscillator(const Oscillator& oscillator);

    struct Step {
        std::int32_t value = 0;
        bool isShown = false; // every second value of a continuous wave, every value of the others
    };
    // Goes on to `now` and gives the value to send, if it is time for one. The first tick of all, the first after
    // resume(), and one that is not behind the one before count as one tick.
    [[nodiscard]] std::optional<Step> advance(Ticks now);
    // The ticks since the last one do not count.
    void resume() { lastTime_ = noTicks; }

    [[nodiscard]] const Oscillator& settings() const { return settings_; }
    void setSpeed(std::int32_t speed) { settings_.speed = speed; }
    void setPlaying(bool on) { settings_.playing = on; }
    // The stop value counts as sent, so that the wave sends again what it was at.
    void tookStopValue() { lastSent_ = settings_.stopValue; }

    // The message with a value in its data byte, clamped to what fits. Ppq: none.
    [[nodiscard]] MidiEngine::QelMidiMessage messageOf(std::int32_t value) const;

private:
    static constexpr std::int64_t nothing = -1;

    [[nodiscard]] double increment() const;
    [[nodiscard]] std::int64_t valueAt(double phase);

    Oscillator settings_;
    RandomNumbers random_;
    std::int64_t low_;
    std::int64_t range_;
    bool isInverted_;
    bool isContinuous_; // its values are thinned out
    double phase_ = 0;
    std::int64_t lastSent_ = nothing;
    std::int64_t changes_ = 0;
    Ticks lastTime_ = noTicks;
};

} // namespace Backend::Oscillators
