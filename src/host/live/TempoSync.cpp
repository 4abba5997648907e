#include "host/live/TempoSync.h"

#include <algorithm>
#include <cmath>

namespace Host {

using Backend::engineTimeOrigin;
using Backend::ticksPerQuarter;
using Backend::MidiEngine::MessageType;

namespace {

constexpr std::size_t room = 1024;
constexpr double ticksPerClock = 20;
// What the source is ahead is made up for within about so many ticks, half a beat.
constexpr double horizon = ticksPerQuarter / 2.0;
constexpr double mostHaste = 0.25;
// Farther apart, ticks and clocks have lost each other.
constexpr double lostTicks = ticksPerQuarter / 2.0;
// A transport's place is only known to the tick of its master.
constexpr double transportGrain = 0.75;

bool isSync(std::uint8_t status) {
    switch (static_cast<MessageType>(status)) {
    case MessageType::timingTick:
    case MessageType::startSong:
    case MessageType::continueSong:
    case MessageType::stopSong:
    case MessageType::songPosition:
        return true;
    default:
        return false;
    }
}

double toNearest(double ticks, double grain) {
    return std::round(ticks / grain) * grain;
}

} // namespace

TempoSync::TempoSync(ClockedEngine& engine, TickRunner& runner)
    : engine_(engine), runner_(runner), messages_(room), unitsPerSecond_(runner.grid().unitsPerSecond()),
      follower_(unitsPerSecond_) {}

bool TempoSync::arrived(int input, const MidiBytes& bytes, std::int64_t time) noexcept {
    const std::uint8_t status = bytes.bytes[0];
    const std::uint8_t source = this->source();
    if (bytes.size == 0 || source != input + 1 || !isSync(status)) {
        return false;
    }
    if (!pushing_.test_and_set(std::memory_order_acquire)) {
        const int position = bytes.size < 3 ? 0 : bytes.bytes[1] | bytes.bytes[2] << 7;
        static_cast<void>(messages_.push({time, status, source, static_cast<std::int16_t>(position)}));
        pushing_.clear(std::memory_order_release);
    }
    return static_cast<MessageType>(status) == MessageType::timingTick;
}

Tempo TempoSync::tempo() const noexcept {
    Tempo tempo = runner_.ownTempo();
    if (const std::int32_t shown = shown_.load(std::memory_order_relaxed); shown != 0 && runner_.isSteered()) {
        tempo.thousandths = shown;
    }
    return tempo;
}

void TempoSync::setLocked(bool on) {
    isLocked_.store(on, std::memory_order_relaxed);
    runner_.holdSteering(on);
}

void TempoSync::takeSource() {
    const std::uint8_t source = this->source();
    if (source == followed_) {
        return;
    }
    followed_ = source;
    follower_ = ClockFollower(unitsPerSecond_);
    transportRolls_ = false;
    setLocked(false);
    runner_.steer({});
    shown_.store(0, std::memory_order_relaxed);
}

void TempoSync::moveTo(std::int64_t unitsPerSecond) {
    unitsPerSecond_ = unitsPerSecond;
    follower_ = ClockFollower(unitsPerSecond);
    setLocked(false);
    for (SyncMessage old; messages_.pop(old);) {
    }
    hasNext_ = false;
}

void TempoSync::runUntil(std::int64_t time) {
    takeSource();
    for (; hasNext_ || messages_.pop(next_); hasNext_ = false) {
        hasNext_ = true;
        if (next_.time > time) {
            break;
        }
        if (next_.source == followed_) {
            runner_.runUntil(next_.time - 1);
            take(next_);
        }
    }
    if (followed_ != noSource && followed_ != jackTransport) {
        follower_.pass(time);
        if (isLocked() && !follower_.isLocked()) {
            steer(follower_.tempo(), 0);
            setLocked(false);
        }
    }
    runner_.runUntil(time);
}

void TempoSync::take(const SyncMessage& message) {
    switch (static_cast<MessageType>(message.status)) {
    case MessageType::startSong:
        follower_.start();
        return tellTransport(Transport::start);
    case MessageType::continueSong:
        follower_.goOn();
        return tellTransport(Transport::goOn);
    case MessageType::stopSong:
        follower_.stop();
        return tellTransport(Transport::stop);
    case MessageType::songPosition:
        return follower_.locate(message.sixteenths);
    default:
        break;
    }
    follower_.clock(message.time);
    if (!follower_.isLocked()) {
        return;
    }
    const double theirs = follower_.clocksAt(message.time) * ticksPerClock;
    const double ours = ticksAt(message.time);
    if (follower_.phase() != phase_ || !isLocked() || std::abs(base_ + theirs - ours) > lostTicks) {
        phase_ = follower_.phase();
        base_ = toNearest(ours - theirs, ticksPerClock);
    }
    setLocked(true);
    steer(follower_.tempo(), base_ + theirs - ours);
}

void TempoSync::tellTransport(Transport transport) {
    engine_.transportChanged(transport, static_cast<std::int32_t>(follower_.nextSixteenth()));
}

double TempoSync::ticksAt(std::int64_t time) const {
    return runner_.grid().ticksFrom(engineTimeOrigin.count, time);
}

void TempoSync::steer(double beatsPerMinute, double ahead) {
    const double haste = std::clamp(ahead / horizon, -mostHaste, mostHaste);
    shown_.store(Tempo::of(beatsPerMinute).thousandths, std::memory_order_relaxed);
    runner_.steer(Tempo::of(beatsPerMinute * (1 + haste)));
}

void TempoSync::transportAt(std::int64_t time, const TransportReading& reading) {
    takeSource();
    if (followed_ != jackTransport) {
        return;
    }
    if (reading.isRolling != transportRolls_) {
        const bool fromStart = reading.beats < 1.0 / ticksPerQuarter;
        engine_.transportChanged(!reading.isRolling ? Transport::stop
                                 : fromStart        ? Transport::start
                                                    : Transport::goOn,
                                 static_cast<std::int32_t>(reading.beats * 4));
    }
    const bool hasPlace = reading.isRolling && reading.hasTempo;
    if (hasPlace) {
        const double theirs = reading.beats * ticksPerQuarter;
        const double ours = ticksAt(time);
        // Beats may be told without the whole ones before them.
        double ahead = std::remainder(base_ + theirs - ours, ticksPerQuarter);
        if (!transportRolls_ || std::abs(ahead) > ticksPerClock) {
            base_ = toNearest(ours - theirs, ticksPerClock);
            ahead = base_ + theirs - ours;
        }
        steer(reading.tempo, std::abs(ahead) > transportGrain ? ahead : 0);
    } else if (reading.hasTempo) {
        steer(reading.tempo, 0);
    }
    transportRolls_ = reading.isRolling;
    setLocked(reading.hasTempo);
}

} // namespace Host
