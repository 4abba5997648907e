#include "generators/recording/RecordWriter.h"

#include "generators/recording/BufferReader.h"
#include "generators/recording/RecordContent.h"
#include "platform/SafeFiles.h"
#include "values/VariableLength.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Backend::Recording {

using Platform::Outcome;
using Platform::Result;

namespace {

constexpr std::uint32_t longestPause = 7000; // milliseconds; a longer one is recorded as this
constexpr std::uint32_t roomForEvent = 10;
constexpr std::size_t mostPending = 64 * 1024;
constexpr std::uint32_t betweenTries = 1000;
constexpr std::uint32_t betweenIndexes = 1000;

} // namespace

RecordWriter::RecordWriter(std::filesystem::path folder, const RecordLimits& limits, RecordClocks clocks,
                           std::function<void(const std::string&)> remark)
    : files_(std::move(folder)), limits_(limits), clocks_(std::move(clocks)), remark_(std::move(remark)) {
    clear();
}

void RecordWriter::setLimits(const RecordLimits& limits) {
    limits_ = limits;
    if (paused_) {
        return;
    }
    const Result<int> dropped = files_.limit(limits.olderFiles);
    if (!dropped) {
        pause(dropped.fault());
        return;
    }
    for (int i = 0; i < dropped.value(); ++i) {
        takes_.dropOldestFile();
    }
    indexStale_ = true;
}

void RecordWriter::record(const PlayedMessage& message) {
    const std::uint32_t size = message.size();
    const std::array<char, 3> bytes{static_cast<char>(message.wire), static_cast<char>(message.wire >> 8),
                                    static_cast<char>(message.wire >> 16)};
    const bool isWhole = (bytes[1] & 0x80) == 0 && (bytes[2] & 0x80) == 0 &&
                         size == static_cast<std::uint32_t>(MidiEngine::dataByteCount(
                                     MidiEngine::fixStatus(static_cast<MidiEngine::MessageType>(message.status())))) +
                                     1;
    if (!isWhole || !isRecordable(message.status())) {
        return;
    }
    if (!paused_ && files_.size() + roomForEvent > limits_.fileSize) {
        if (const Outcome made = makeRoom(); !made) {
            pause(made.fault());
        }
    }
    if (paused_) {
        ++missed_;
        return;
    }
    // A message may have been stamped just before the clock was read that the last event's time is from.
    const auto passed = static_cast<std::int32_t>(message.milliseconds - lastEvent_);
    const std::uint32_t pause =
        std::min(passed < 0 ? (passed < -60'000 ? longestPause : 0) : static_cast<std::uint32_t>(passed), longestPause);
    lastEvent_ = message.milliseconds;
    const BufferEvent event{pause / tickMilliseconds, {bytes.data(), size}};
    const VariableLength delta(event.ticks);
    files_.append(delta.bytes());
    files_.append(event.message);
    const std::int64_t time =
        calendarOffset_ + static_cast<std::int32_t>(message.milliseconds - offsetAt_); // near the last flush
    if (takes_.add(event, static_cast<std::uint32_t>(delta.bytes().size()) + size, time)) {
        indexAt_ = offsetAt_ - betweenIndexes; // at the next flush
    }
    indexStale_ = true;
    if (files_.pending() > mostPending) {
        flush(message.milliseconds);
    }
}

void RecordWriter::resume(std::uint32_t now) {
    calendarOffset_ = clocks_.calendar();
    offsetAt_ = now;
    if (!paused_ || now - triedAt_ < betweenTries) {
        return;
    }
    triedAt_ = now;
    const bool something = files_.pending() > 0;
    Outcome recovered = files_.recover();
    if (recovered && files_.size() + roomForEvent > limits_.fileSize) {
        recovered = makeRoom();
    }
    if (!recovered) {
        return;
    }
    paused_ = false;
    indexStale_ = true;
    if (TakeList found = readTakes(files_.folder()); found.size() != takes_.size()) {
        takes_ = std::move(found); // buffers have gone meanwhile
    }
    if (something) {
        sayThatItGoesOn();
    }
}

void RecordWriter::flush(std::uint32_t now) {
    if (paused_) {
        return;
    }
    const bool something = files_.pending() > 0;
    if (const Outcome written = files_.write(); !written) {
        pause(written.fault());
        triedAt_ = now - betweenTries; // at once, for the first time
        return;
    }
    if (something) {
        sayThatItGoesOn();
    }
    if (indexStale_ && now - indexAt_ >= betweenIndexes) {
        indexAt_ = now;
        writeIndex();
    }
}

void RecordWriter::close() {
    const std::uint32_t now = clocks_.milliseconds();
    resume(now);
    flush(now);
    if (!paused_) {
        writeIndex();
    }
    files_.close();
}

Result<SavedRecord> RecordWriter::save(const std::filesystem::path& target, std::optional<int> fromLast) {
    const std::uint32_t now = clocks_.milliseconds();
    resume(now);
    flush(now);
    auto saved = saveRecord(files_.folder(), takes(), target, fromLast);
    if (saved && !fromLast) {
        clear();
    }
    return saved;
}

std::vector<Take> RecordWriter::takes() const {
    std::vector<Take> takes = takes_.takes();
    setStarts(takes, {}, clocks_.calendar());
    return takes;
}

void RecordWriter::clear() {
    takes_.clear();
    lastEvent_ = clocks_.milliseconds();
    calendarOffset_ = clocks_.calendar();
    offsetAt_ = lastEvent_;
    paused_ = false;
    if (const Outcome cleared = files_.clear(); !cleared) {
        pause(cleared.fault());
    }
    takes_.beginFile();
    writeIndex();
}

Outcome RecordWriter::makeRoom() {
    const Result<int> dropped = files_.rotate(limits_.olderFiles);
    if (!dropped) {
        return dropped.fault();
    }
    takes_.beginFile();
    for (int i = 0; i < dropped.value(); ++i) {
        takes_.dropOldestFile();
    }
    return Platform::success();
}

void RecordWriter::pause(const Platform::Fault& fault) {
    paused_ = true;
    triedAt_ = offsetAt_;
    if (!std::exchange(saidSo_, true)) {
        remark_("the record pauses: " + fault.text());
    }
}

void RecordWriter::sayThatItGoesOn() {
    if (std::exchange(saidSo_, false)) {
        remark_("the record goes on; messages that it has missed: " + std::to_string(missed_));
    }
}

// A convenience for who reads the buffers: it may be lost.
void RecordWriter::writeIndex() {
    indexStale_ = !Platform::replaceFile(indexFile(files_.folder()), indexOf(takes()), Platform::Survives::process);
}

} // namespace Backend::Recording
