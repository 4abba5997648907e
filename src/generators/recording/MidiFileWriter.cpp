#include "generators/recording/MidiFileWriter.h"

#include "generators/recording/BufferReader.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/TemporaryName.h"
#include "values/VariableLength.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

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

// A file that takes the target's place at the end, or is gone.
class NewFile final {
public:
    explicit NewFile(const fs::path& target)
        : name_(target), target_(Platform::resolvedTarget(target)), path_(Platform::temporaryNameBeside(target_)) {
        errno = 0;
        file_.open(path_, std::ios::binary | std::ios::trunc);
        error_ = errno;
    }
    ~NewFile() {
        file_.close();
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(std::string_view bytes) {
        if (file_) {
            errno = 0;
            file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            error_ = errno;
        }
    }
    void writeAt(std::streamoff place, std::string_view bytes) {
        file_.seekp(place);
        write(bytes);
    }
    // What was written, or why it was not.
    [[nodiscard]] Result<std::string> close() {
        if (file_) {
            errno = 0;
            file_.close();
            error_ = errno;
        }
        return file_ ? Platform::readWholeFile(path_, std::numeric_limits<std::size_t>::max() / 2)
                     : Result<std::string>(fault(std::generic_category().message(error_ != 0 ? error_ : EIO)));
    }
    [[nodiscard]] Outcome put() {
        std::error_code error;
        fs::rename(path_, target_, error);
        return error ? Outcome(fault(error.message())) : Platform::success();
    }
    [[nodiscard]] Fault fault(const std::string& reason) const { return {Platform::textOf(name_), 0, reason}; }

private:
    fs::path name_;
    fs::path target_;
    fs::path path_;
    std::ofstream file_;
    int error_ = 0;
};

// Read back: nothing but All Sound Off before the End of Track.
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
    Joiner(NewFile& file, const BufferRange& range, bool startsAtOnce)
        : file_(file), range_(range), startsAtOnce_(startsAtOnce) {}

    void add(std::string_view buffer) {
        BufferReader events(buffer);
        std::size_t from = 0; // of what is copied as it stands
        std::size_t at = 0;
        const auto copy = [&] {
            file_.write(buffer.substr(from, at - from));
            bytes += at - from;
        };
        for (BufferEvent event; events.next(event); at = events.position()) {
            const std::uint64_t place = position_ + at;
            if (place < range_.begin || place >= range_.end) {
                copy();
                from = events.position();
            } else {
                if (startsAtOnce_ && saved.events == 0) {
                    file_.write(VariableLength(0).bytes());
                    file_.write(event.message);
                    bytes += 1 + event.message.size();
                    from = events.position();
                }
                count(event);
            }
        }
        copy();
        position_ += at;
    }

    SavedRecord saved;
    std::uint64_t bytes = 0;

private:
    void count(const BufferEvent& event) {
        saved.milliseconds += saved.events > 0 ? event.ticks * tickMilliseconds : 0;
        ++saved.events;
        const auto status = static_cast<std::uint8_t>(event.message[0]);
        saved.notes += (status & 0xF0) == 0x90 && event.message[2] != 0 ? 1 : 0;
    }

    NewFile& file_;
    BufferRange range_;
    bool startsAtOnce_;
    std::uint64_t position_ = 0;
};

Result<SavedRecord> write(const fs::path& target, const std::vector<fs::path>& buffers, const BufferRange& range,
                          bool startsAtOnce) {
    NewFile file(target);
    file.write(header);
    Joiner joiner(file, range, startsAtOnce);
    for (const fs::path& buffer : buffers) {
        auto content = Platform::readWholeFile(buffer, std::numeric_limits<std::uint32_t>::max());
        if (!content) {
            return content.fault();
        }
        joiner.add(content.value());
    }
    file.write(closing);
    const std::uint64_t length = joiner.bytes + closing.size();
    if (length > std::numeric_limits<std::uint32_t>::max()) {
        return file.fault("a track of more than 4 GiB does not fit into the format");
    }
    const std::array<char, 4> bigEndian{static_cast<char>(length >> 24), static_cast<char>(length >> 16),
                                        static_cast<char>(length >> 8), static_cast<char>(length)};
    file.writeAt(lengthAt, {bigEndian.data(), bigEndian.size()});
    auto written = file.close();
    if (!written) {
        return written.fault();
    }
    if (holdsOnlyAllSoundOff(written.value())) {
        return SavedRecord{};
    }
    if (const Outcome put = file.put(); !put) {
        return put.fault();
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
