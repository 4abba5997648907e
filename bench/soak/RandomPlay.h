// What a player with too many hands might do, the same again for the same seed.
#pragma once

#include "host/Performance.h"

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Soak {

inline constexpr std::int32_t ticksPerMinute = 480 * 120;
inline constexpr std::int32_t ticksPlayed = ticksPerMinute - 480; // the rest of a minute is quiet

// Gives events in order of time; remembers what is down, to let it go.
class RandomPlay final {
public:
    RandomPlay(std::uint64_t seed, int inputs, std::vector<std::string> presets);

    // The events of one minute from `start` on; all that is down is let go after ticksPlayed.
    [[nodiscard]] std::vector<Host::PerformanceEvent> minute(std::int32_t start);

private:
    using Place = std::pair<std::uint8_t, std::uint8_t>; // input port, status of the Note On
    [[nodiscard]] int number(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
    [[nodiscard]] bool chance(int percent) { return number(0, 99) < percent; }
    template <typename Values> [[nodiscard]] const auto& oneOf(const Values& values) {
        return values[static_cast<std::size_t>(number(0, static_cast<int>(std::size(values)) - 1))];
    }
    [[nodiscard]] Host::PerformanceEvent anything(std::int32_t tick);
    [[nodiscard]] Host::MidiArrives incoming();
    [[nodiscard]] Host::KeyMoves key();
    [[nodiscard]] Host::ButtonMoves button();
    [[nodiscard]] std::string function();
    [[nodiscard]] std::string translation();
    [[nodiscard]] std::string selection(int highest);
    [[nodiscard]] std::string relative(int lowest, int highest);
    void addClock(std::int32_t start, std::int32_t end, std::vector<Host::PerformanceEvent>& events);
    void letGo(std::int32_t tick, std::vector<Host::PerformanceEvent>& events);

    std::mt19937_64 random_;
    int inputs_;
    std::vector<std::string> presets_; // functions that load one
    std::multiset<std::pair<Place, std::uint8_t>> notes_;
    std::set<std::string> keys_;
    std::set<std::pair<std::uint8_t, std::uint8_t>> buttons_;
};

} // namespace Soak
