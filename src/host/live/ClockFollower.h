// Makes an even beat of the MIDI clock of another device.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Host {

// Told when each clock, 24 a quarter note, has come, it says where between the clocks a time lies: the straight line
// that fits the clocks of the last four beats best. So the jitter of a sender shows in it by a fraction. A clock that
// is held up on the way does not count; several that are all late or all early show another tempo, or a loss. Pure
// arithmetic: knows no device, waits for nothing. One thread.
class ClockFollower final {
public:
    // Clocks before a tempo is believed, and a silence after which the sender has stopped, in seconds.
    static constexpr int trustedClocks = 6;
    static constexpr double patience = 0.45;

    // Times are counted in these units and never go back.
    explicit ClockFollower(std::int64_t unitsPerSecond);

    void clock(std::int64_t time);
    // Time has come to `now`: a sender may have fallen silent.
    void pass(std::int64_t now);
    // What comes is another sender. The tempo is kept until a new one is known.
    void forget();

    // The transport of the sender: from its beginning or onwards with the next clock, halted, put to a place counted
    // in sixteenths.
    void start();
    void goOn();
    void stop() { isRolling_ = false; }
    void locate(std::int32_t sixteenths) { nextPosition_ = std::int64_t{sixteenths} * clocksPerSixteenth; }

    // True while clocks come and their tempo is known.
    [[nodiscard]] bool isLocked() const { return isLocked_; }
    // In beats a minute, kept when the sender stops; 0 before the first was known.
    [[nodiscard]] double tempo() const;
    // How many clocks since the phase began, with the part of one that has passed. Only when locked.
    [[nodiscard]] double clocksAt(std::int64_t time) const;
    // Counts how often the phase began: with a first clock after a silence, and with a start.
    [[nodiscard]] std::uint32_t phase() const { return phase_; }

    [[nodiscard]] bool isRolling() const { return isRolling_; }
    // The place in the song of the last clock while it rolled, in clocks.
    [[nodiscard]] std::int64_t songPosition() const { return position_; }
    // The sixteenth in which the next clock will lie if it rolls.
    [[nodiscard]] std::int64_t nextSixteenth() const { return nextPosition_ / clocksPerSixteenth; }

private:
    static constexpr std::int32_t clocksPerSixteenth = 6;
    static constexpr std::size_t longestMemory = 96;

    struct Clock {
        std::int64_t number = 0; // since the phase began
        std::int64_t time = 0;
        bool isStray = false; // far off the line: it does not count
    };

    [[nodiscard]] Clock& latest(std::size_t back = 0) { return clocks_[(end_ - 1 - back) % longestMemory]; }
    [[nodiscard]] const Clock& latest(std::size_t back = 0) const { return clocks_[(end_ - 1 - back) % longestMemory]; }
    void append(Clock clock);
    void beginPhase(std::int64_t time);
    // How far a clock of that number is off the line, in units; late is positive.
    [[nodiscard]] double offLine(const Clock& clock) const;
    // Beyond this a clock is a stray.
    [[nodiscard]] double limit() const;
    // Learns from a new clock what senders are off the line by, and says whether it is far off.
    [[nodiscard]] bool isStray(const Clock& clock);
    // After several strays: they have another tempo, or some were lost, or it is not clear yet.
    void judgeStrays();
    // The line through the latest of them alone; true when they lie on one.
    [[nodiscard]] bool latestAreEven(double& period) const;
    void fit();
    void moveSong(std::int64_t clocks);

    double unitsPerSecond_;

    std::array<Clock, longestMemory> clocks_{}; // a ring
    std::size_t end_ = 0;
    std::size_t count_ = 0; // of those that the line is for

    // The line: the latest clock, on the line, is at its time + offset_; period_ units a clock.
    double offset_ = 0;
    double period_ = 0;
    double knownPeriod_ = 0; // of the tempo to be told; 0: none yet
    bool isLocked_ = false;
    bool keepsTempo_ = false; // the phase began in the midst of clocks: their tempo goes on
    std::uint32_t phase_ = 0;

    double spread_ = 0;      // how far clocks are off the line on average, without regard to the sign
    std::size_t strays_ = 0; // the latest so many

    bool isRolling_ = false;
    bool rollsWithNext_ = false;
    std::int64_t nextPosition_ = 0;
    std::int64_t position_ = 0;
};

} // namespace Host
