#include "host/SmfReader.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace Host {

using Platform::Fault;
using Platform::Outcome;

namespace {

constexpr std::size_t chunkHeaderSize = 8;
constexpr int trackBits = 16; // a file has at most 65535 tracks
constexpr std::uint64_t nothingLeft = std::numeric_limits<std::uint64_t>::max();

// Whole beats a minute, kept within what the program plays.
int beatsPerMinute(std::uint32_t microsecondsPerQuarter) {
    if (microsecondsPerQuarter == 0) {
        return 500;
    }
    const std::uint32_t rounded = (60'000'000U + microsecondsPerQuarter / 2) / microsecondsPerQuarter;
    return static_cast<int>(std::clamp<std::uint32_t>(rounded, 10, 500));
}

// Mostly the event held a message before, so that only its bytes change.
void setMessage(PerformanceEvent& event, MidiArrives message) {
    if (auto* const held = std::get_if<MidiArrives>(&event.what)) {
        *held = message;
    } else {
        event.what = message;
    }
}

} // namespace

bool SmfReader::recognises(std::string_view content) noexcept {
    return content.starts_with("MThd");
}

Platform::Result<std::unique_ptr<SmfReader>> SmfReader::open(std::string content, const std::string& name, int inputs) {
    std::unique_ptr<SmfReader> reader(new SmfReader(std::move(content), name));
    if (const Outcome read = reader->readChunks(); !read) {
        return read.fault();
    }
    for (const SmfTrack& track : reader->tracks_) {
        if (const Outcome checked = reader->checkTrack(track, inputs); !checked) {
            return checked.fault();
        }
    }
    reader->startMerging();
    return reader;
}

bool SmfReader::next(PerformanceEvent& event) {
    while (winners_[1] != nothingLeft) {
        const std::uint64_t winner = winners_[1];
        const std::size_t number = winner & ((1U << trackBits) - 1);
        SmfTrack& track = tracks_[number];
        const auto tick = static_cast<std::int32_t>(winner >> trackBits);
        const bool isMessage = found_[number] == SmfTrack::Found::message;
        const int tempo = isMessage ? tempo_ : beatsPerMinute(track.microsecondsPerQuarter());
        if (isMessage) {
            event.tick = tick;
            setMessage(event, {track.port(), track.status(), track.d1(), track.d2()});
        }
        found_[number] = track.next();
        enter(number);
        if (isMessage) {
            return true;
        }
        if (tempo != tempo_) {
            tempo_ = tempo;
            event.tick = tick;
            event.what = SetTempo{tempo};
            return true;
        }
    }
    return false;
}

Outcome SmfReader::readChunks() {
    if (const Outcome header = readHeader(); !header) {
        return header;
    }
    std::size_t position = chunkHeaderSize + numberAt(4, 4);
    while (tracks_.size() < trackCount_) {
        if (content_.size() - position < chunkHeaderSize) {
            return fault(content_.size(), "the file ends after " + std::to_string(tracks_.size()) + " of " +
                                              std::to_string(trackCount_) + " tracks");
        }
        const std::size_t length = numberAt(position + 4, 4);
        const std::size_t begin = position + chunkHeaderSize;
        if (length > content_.size() - begin) {
            return fault(position + 4, "a chunk reaches beyond the end of the file");
        }
        if (std::string_view(content_).substr(position, 4) == "MTrk") {
            tracks_.emplace_back(bytes() + begin, bytes() + begin + length);
        }
        position = begin + length;
    }
    return Platform::success();
}

Outcome SmfReader::readHeader() {
    if (!recognises(content_)) {
        return fault(0, "not a Standard MIDI File");
    }
    if (content_.size() < 14) {
        return fault(content_.size(), "the file ends within its header");
    }
    const std::uint32_t length = numberAt(4, 4);
    if (length < 6 || length > content_.size() - chunkHeaderSize) {
        return fault(4, "a header of " + std::to_string(length) + " bytes");
    }
    const std::uint32_t format = numberAt(8, 2);
    if (format > 1) {
        return fault(8, "format " + std::to_string(format) + "; only the formats 0 and 1 are read");
    }
    trackCount_ = numberAt(10, 2);
    if (trackCount_ == 0) {
        return fault(10, "a file without tracks");
    }
    if (format == 0 && trackCount_ > 1) {
        return fault(10, "format 0 with " + std::to_string(trackCount_) + " tracks");
    }
    division_ = numberAt(12, 2);
    if (division_ >= 0x8000) {
        return fault(12, "time in SMPTE frames; only ticks a quarter note are read");
    }
    if (division_ == 0) {
        return fault(12, "a division of 0 ticks a quarter note");
    }
    wholeFactor_ = 480 % division_ == 0 ? 480 / division_ : 0;
    return Platform::success();
}

Outcome SmfReader::checkTrack(SmfTrack track, int inputs) const {
    const auto position = [&] { return static_cast<std::size_t>(track.position() - bytes()); };
    while (true) {
        const SmfTrack::Found found = track.next();
        if (found == SmfTrack::Found::fault) {
            return fault(position(), track.reason());
        }
        if (found == SmfTrack::Found::end) {
            return Platform::success();
        }
        if (tickOf(track.time()) > latestTick) {
            return fault(position(), "an event later than tick " + std::to_string(latestTick));
        }
        if (found == SmfTrack::Found::message && track.port() >= inputs) {
            return fault(position(), "there is no input port " + std::to_string(track.port()) +
                                         "; inputs: " + std::to_string(inputs));
        }
    }
}

void SmfReader::startMerging() {
    winners_.assign(2 * std::bit_ceil(std::max<std::size_t>(tracks_.size(), 1)), nothingLeft);
    for (std::size_t number = 0; number < tracks_.size(); ++number) {
        found_.push_back(tracks_[number].next());
        enter(number);
    }
}

std::int64_t SmfReader::tickOf(std::uint64_t time) const noexcept {
    // Within 64 bits: a track of less than 2^32 bytes has less than 2^31 deltas, each below 2^28, ...
    constexpr std::uint64_t tooLate = std::uint64_t{1} << 50;
    if (time >= tooLate) {
        return std::int64_t{latestTick} + 1; // ... and 2^50 / 32767 quarter notes are later than any tick we take.
    }
    if (wholeFactor_ != 0) {
        return static_cast<std::int64_t>(time * wholeFactor_);
    }
    const std::uint64_t doubled = time * (2 * 480) + division_;
    const bool isSmall = doubled <= std::numeric_limits<std::uint32_t>::max(); // then dividing is several times faster
    return static_cast<std::int64_t>(isSmall ? static_cast<std::uint32_t>(doubled) / (2 * division_)
                                             : doubled / (2 * std::uint64_t{division_}));
}

// Lets a track play against the others again, with what stands next in it. No branch depends on who wins: nobody could
// foretell it.
void SmfReader::enter(std::size_t track) noexcept {
    std::uint64_t* const winners = winners_.data();
    std::size_t place = winners_.size() / 2 + track;
    winners[place] = found_[track] == SmfTrack::Found::end
                         ? nothingLeft
                         : static_cast<std::uint64_t>(tickOf(tracks_[track].time())) << trackBits | track;
    while (place > 1) {
        place /= 2;
        winners[place] = std::min(winners[2 * place], winners[2 * place + 1]);
    }
}

const std::uint8_t* SmfReader::bytes() const noexcept {
    return reinterpret_cast<const std::uint8_t*>(content_.data());
}

// A big-endian number of `size` bytes, which must be there.
std::uint32_t SmfReader::numberAt(std::size_t position, int size) const noexcept {
    std::uint32_t number = 0;
    for (int count = 0; count < size; ++count) {
        number = number << 8 | bytes()[position++];
    }
    return number;
}

Fault SmfReader::fault(std::size_t position, const std::string& reason) const {
    return {name_, 0, "byte " + std::to_string(position) + ": " + reason};
}

} // namespace Host
