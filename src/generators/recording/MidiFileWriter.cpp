#include "generators/recording/MidiFileWriter.h"

#include "generators/recording/BufferReader.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "values/BigEndian.h"
#include "values/VariableLength.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace Backend::Recording {

namespace fs = std::filesystem;
using Platform::Fault;
using Platform::Outcome;
using Platform::Result;

namespace {

constexpr std::size_t headerSize = 22; // up to the track's events
constexpr std::size_t lengthAt = 18;
// Format 0, one track, 96 ticks a quarter note; the length of the track is filled in at the end.
constexpr std::string_view header("MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\0", headerSize);
// All Sound Off on channel 1 after 96 ticks; End of Track.
constexpr std::string_view closing("\x60\xB0\x78\0\0\xFF\x2F\0", 8);

bool isAllSoundOff(std::string_view message) {
    return (static_cast<std::uint8_t>(message[0]) & 0xF0) == 0xB0 && message[1] == 120;
}

// Nothing but All Sound Off before the End of Track.
bool holdsOnlyAllSoundOff(std::string_view file) {
    BufferReader events(file.substr(std::min(headerSize, file.size())));
    for (BufferEvent event; events.next(event);) {
        if (!isAllSoundOff(event.message)) {
            return false;
        }
    }
    return true;
}

// Copies buffers, as far as they are in the range, and counts.
class Joiner final {
public:
    Joiner(std::string& file, const BufferRange& range, bool startsAtOnce)
        : file_(file), range_(range), startsAtOnce_(startsAtOnce) {}

    void add(std::string_view buffer) {
        BufferReader events(buffer);
        std::size_t from = 0; // of what is copied as it stands
        std::size_t at = 0;
        const auto copy = [&] { file_ += buffer.substr(from, at - from); };
        for (BufferEvent event; events.next(event); at = events.position()) {
            const std::uint64_t place = position_ + at;
            if (place < range_.begin || place >= range_.end) {
                copy();
                from = events.position();
            } else {
                if (startsAtOnce_ && saved.events == 0) {
                    file_ += VariableLength(0).bytes();
                    file_ += event.message;
                    from = events.position();
                }
                count(event);
            }
        }
        copy();
        position_ += at;
    }

    SavedRecord saved;

private:
    void count(const BufferEvent& event) {
        saved.milliseconds += saved.events > 0 ? event.ticks * tickMilliseconds : 0;
        ++saved.events;
        const auto status = static_cast<std::uint8_t>(event.message[0]);
        saved.notes += (status & 0xF0) == 0x90 && event.message[2] != 0 ? 1 : 0;
    }

    std::string& file_;
    BufferRange range_;
    bool startsAtOnce_;
    std::uint64_t position_ = 0;
};

Result<SavedRecord> write(const fs::path& target, const std::vector<fs::path>& buffers, const BufferRange& range,
                          bool startsAtOnce) {
    std::string file(header);
    Joiner joiner(file, range, startsAtOnce);
    for (const fs::path& buffer : buffers) {
        auto content = Platform::readWholeFile(buffer, std::numeric_limits<std::uint32_t>::max());
        if (!content) {
            return content.fault();
        }
        joiner.add(content.value());
    }
    file += closing;
    const std::uint64_t length = file.size() - headerSize;
    if (length > std::numeric_limits<std::uint32_t>::max()) {
        return Fault{Platform::textOf(target), 0, "a track of more than 4 GiB does not fit into the format"};
    }
    file.replace(lengthAt, 4, bigEndian(static_cast<std::uint32_t>(length), 4));
    if (holdsOnlyAllSoundOff(file)) {
        return SavedRecord{};
    }
    if (const Outcome written = Platform::replaceFile(target, file); !written) {
        return written.fault();
    }
    joiner.saved.written = true;
    return joiner.saved;
}

} // namespace

Result<SavedRecord> writeMidiFile(const fs::path& target, const std::vector<fs::path>& buffers) {
    return write(target, buffers, {0, std::numeric_limits<std::uint64_t>::max()}, false);
}

Result<SavedRecord> writeMidiFile(const fs::path& target, const std::vector<fs::path>& buffers,
                                  const BufferRange& range) {
    return write(target, buffers, range, true);
}

} // namespace Backend::Recording
