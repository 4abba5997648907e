// The record as takes: stretches of playing with silence between them.
#pragma once

#include "generators/recording/BufferReader.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

namespace Backend::Recording {

struct Take {
    std::uint64_t begin = 0; // bytes from the start of the oldest buffer
    std::uint64_t end = 0;
    std::int64_t start = 0;  // milliseconds since 1970; 0: not known
    std::uint64_t ticks = 0; // of 5 ms, from the first event to the last
    std::uint64_t notes = 0; // Note Ons

    bool operator==(const Take&) const = default;
};

// A take ends with 5 s in which nothing is played while no note is held. Told of every event as it is written or read
// again, file by file. Used by one thread.
class TakeList final {
public:
    static constexpr std::uint32_t silence = 1000; // ticks

    // What follows stands in a new file, the newest.
    void beginFile();
    void dropOldestFile(); // only when there is one
    void clear();

    // An event that takes `size` bytes of the newest file. True when a take begins with it. `time` is that of the
    // event.
    bool add(const BufferEvent& event, std::uint32_t size, std::int64_t time);

    [[nodiscard]] std::vector<Take> takes() const;
    [[nodiscard]] std::uint64_t size() const noexcept; // bytes of all files

private:
    // What one take has in one file.
    struct Stretch {
        bool beginsTake = true;
        std::uint64_t size = 0;
        std::int64_t start = 0;
        std::uint64_t lead = 0; // ticks from the stretch before to the first event
        std::uint64_t ticks = 0;
        std::uint64_t notes = 0;
    };
    using File = std::vector<Stretch>;

    void follow(std::string_view message);

    std::vector<File> files_;
    std::bitset<16 * 128> held_; // by channel, then note
    bool first_ = true;
};

// The index that stands beside the buffers: a line for each take, "BEGIN END START MILLISECONDS NOTES".
[[nodiscard]] std::string indexOf(const std::vector<Take>& takes);
// Gives the takes whose start is not known the one in the index; where that has none it is worked out backwards from
// `end`, when the record ended, as well as the buffers tell (no pause counts more than 7 s there).
void setStarts(std::vector<Take>& takes, const std::string& index, std::int64_t end);

} // namespace Backend::Recording
