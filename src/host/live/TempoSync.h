// Keeps a clock's ticks in step with its tempo source.
#pragma once

#include "core/SpscRing.h"
#include "host/live/ClockFollower.h"
#include "host/live/ClockedEngine.h"
#include "host/live/MidiBytes.h"
#include "host/live/SyncMessage.h"
#include "host/live/TickRunner.h"

#include <atomic>
#include <cstdint>

namespace Host {

// Without a source the runner has the tempo that it was told. With one, each clock that comes sets the tempo of the
// ticks behind it, so that they come to stand where the source has them: every twentieth tick on a clock. No tick is
// left out or repeated for that. A source that falls silent leaves its tempo behind, until another is set.
class TempoSync final {
public:
    // Numbers of sources: 0 none, 1 + i the MIDI clock of input i.
    static constexpr std::uint8_t noSource = 0;
    static constexpr std::uint8_t jackTransport = 254;

    // Both outlive this.
    TempoSync(ClockedEngine& engine, TickRunner& runner);

    void follow(std::uint8_t source) noexcept { source_.store(source, std::memory_order_relaxed); } // [any]
    [[nodiscard]] std::uint8_t source() const noexcept { return source_.load(std::memory_order_relaxed); }

    // A message has arrived on an input at that time. True when it is a clock of the source, and so for nobody else.
    // Neither waits nor allocates. [input]
    [[nodiscard]] bool arrived(int input, const MidiBytes& bytes, std::int64_t time) noexcept;

    // Runs the ticks up to `time`, in step with what has arrived up to then. [clock]
    void runUntil(std::int64_t time);
    // A period begins at `time`, and the transport is here. [clock]
    void transportAt(std::int64_t time, const TransportReading& reading);
    // Times are another device's from here on. [clock]
    void moveTo(std::int64_t unitsPerSecond);

    // In beats a minute, without what phases ask for. [any]
    [[nodiscard]] Tempo tempo() const noexcept;
    // True while the source is heard. [any]
    [[nodiscard]] bool isLocked() const noexcept { return isLocked_.load(std::memory_order_relaxed); }

private:
    void takeSource();
    void take(const SyncMessage& message);
    void tellTransport(Transport transport);
    // Where the ticks are at `time`: since the first one.
    [[nodiscard]] double ticksAt(std::int64_t time) const;
    // The source says that its tempo is this and that it is `ahead` ticks ahead of ours.
    void steer(double beatsPerMinute, double ahead);
    void setLocked(bool on);

    ClockedEngine& engine_;
    TickRunner& runner_;
    std::atomic<std::uint8_t> source_ = noSource;
    std::atomic<std::int32_t> shown_ = 0; // tempo in thousandths, 0: the runner's own
    std::atomic<bool> isLocked_ = false;
    Backend::SpscRing<SyncMessage> messages_;
    std::atomic_flag pushing_; // inputs are on threads of their own

    // [clock]
    std::uint8_t followed_ = noSource;
    std::int64_t unitsPerSecond_;
    ClockFollower follower_;
    SyncMessage next_; // taken out of messages_, of a time to come
    bool hasNext_ = false;
    std::uint32_t phase_ = 0; // of the follower, that base_ is for
    double base_ = 0;         // the tick of its clock 0
    bool transportRolls_ = false;
};

} // namespace Host
