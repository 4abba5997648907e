#include "generators/recording/TakeList.h"

#include <map>
#include <sstream>

namespace Backend::Recording {

namespace {
constexpr std::int64_t latestStart = 1'000'000'000'000'000; // far beyond any
const char* const indexTitle = "# Tembrel takes, format 1: begin, end (bytes), start, length (ms), notes\n";
} // namespace

void TakeList::beginFile() {
    files_.emplace_back();
}

void TakeList::dropOldestFile() {
    files_.erase(files_.begin());
}

void TakeList::clear() {
    files_.clear();
    held_.reset();
    first_ = true;
}

bool TakeList::add(const BufferEvent& event, std::uint32_t size, std::int64_t time) {
    if (files_.empty()) {
        beginFile();
    }
    File& file = files_.back();
    const bool beginsTake = first_ || (event.ticks >= silence && held_.none());
    first_ = false;
    if (beginsTake || file.empty()) {
        file.push_back({beginsTake, 0, time, event.ticks, 0, 0});
    } else {
        file.back().ticks += event.ticks;
    }
    Stretch& stretch = file.back();
    stretch.size += size;
    const auto status = static_cast<std::uint8_t>(event.message[0]);
    const bool noteOn = (status & 0xF0) == 0x90 && event.message[2] != 0;
    stretch.notes += noteOn ? 1 : 0;
    follow(event.message);
    return beginsTake;
}

void TakeList::follow(std::string_view message) {
    const auto status = static_cast<std::uint8_t>(message[0]);
    const std::size_t channel = status & 0x0F;
    if ((status & 0xE0) == 0x80) { // Note Off, Note On
        held_[channel * 128 + static_cast<std::size_t>(message[1])] = (status & 0x10) != 0 && message[2] != 0;
    } else if ((status & 0xF0) == 0xB0 && (message[1] == 120 || message[1] == 123)) { // all of the channel off
        for (std::size_t note = 0; note < 128; ++note) {
            held_[channel * 128 + note] = false;
        }
    }
}

std::uint64_t TakeList::size() const noexcept {
    std::uint64_t size = 0;
    for (const File& file : files_) {
        for (const Stretch& stretch : file) {
            size += stretch.size;
        }
    }
    return size;
}

std::vector<Take> TakeList::takes() const {
    std::vector<Take> takes;
    std::uint64_t at = 0;
    for (const File& file : files_) {
        for (const Stretch& stretch : file) {
            if (stretch.beginsTake || takes.empty()) {
                takes.push_back({at, at, stretch.start, 0, 0});
            } else {
                takes.back().ticks += stretch.lead;
            }
            at += stretch.size;
            takes.back().end = at;
            takes.back().ticks += stretch.ticks;
            takes.back().notes += stretch.notes;
        }
    }
    return takes;
}

std::string indexOf(const std::vector<Take>& takes) {
    std::string text = indexTitle;
    for (const Take& take : takes) {
        text += std::to_string(take.begin) + ' ' + std::to_string(take.end) + ' ' + std::to_string(take.start) + ' ' +
                std::to_string(take.ticks * tickMilliseconds) + ' ' + std::to_string(take.notes) + '\n';
    }
    return text;
}

void setStarts(std::vector<Take>& takes, const std::string& index, std::int64_t end) {
    std::map<std::uint64_t, std::int64_t> known;
    if (index.starts_with(indexTitle)) {
        std::istringstream lines(index.substr(std::string(indexTitle).size()));
        std::uint64_t begin = 0;
        std::uint64_t ignored = 0;
        for (std::int64_t start = 0; lines >> begin >> ignored >> start >> ignored >> ignored;) {
            if (start > 0 && start < latestStart) {
                known.emplace(begin, start);
            }
        }
    }
    for (auto take = takes.rbegin(); take != takes.rend(); ++take) {
        if (const auto found = known.find(take->begin); take->start == 0 && found != known.end()) {
            take->start = found->second;
        } else if (take->start == 0) {
            take->start = end - static_cast<std::int64_t>(take->ticks * tickMilliseconds);
        }
        end = take->start - static_cast<std::int64_t>(TakeList::silence * tickMilliseconds);
    }
}

} // namespace Backend::Recording
