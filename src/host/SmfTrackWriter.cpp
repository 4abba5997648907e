#include "host/SmfTrackWriter.h"

#include "host/ResultFile.h"
#include "values/BigEndian.h"
#include "values/VariableLength.h"

#include <array>
#include <system_error>

namespace Host {

namespace {

constexpr std::size_t bufferSize = 32 * 1024;
constexpr std::int32_t longestDelta = Backend::largestVariableLength;

} // namespace

SmfTrackWriter::SmfTrackWriter(std::filesystem::path overflow) : overflow_(std::move(overflow)) {
    buffer_.reserve(bufferSize);
}

SmfTrackWriter::~SmfTrackWriter() {
    if (file_.is_open()) {
        file_.close();
        std::error_code ignored;
        std::filesystem::remove(overflow_, ignored);
    }
}

void SmfTrackWriter::add(std::int32_t tick, std::string_view bytes) {
    // A longer pause is cut by empty text events.
    for (; tick - tick_ > longestDelta; tick_ += longestDelta) {
        addNumber(longestDelta);
        append({"\xFF\x01\x00", 3});
    }
    addNumber(static_cast<std::uint32_t>(tick > tick_ ? tick - tick_ : 0));
    append(bytes);
    tick_ = tick > tick_ ? tick : tick_;
}

void SmfTrackWriter::addMeta(std::int32_t tick, std::uint8_t type, std::string_view data) {
    add(tick, std::string{'\xFF', static_cast<char>(type)});
    addNumber(static_cast<std::uint32_t>(data.size()));
    append(data);
}

bool SmfTrackWriter::copyTo(ResultFile& file) {
    file.write("MTrk" + Backend::bigEndian(static_cast<std::uint32_t>(size_), 4));
    if (file_.is_open()) {
        file_.seekg(0);
        std::array<char, bufferSize> block;
        for (std::uint64_t left = size_ - buffer_.size(); left > 0;) {
            const auto count = static_cast<std::streamsize>(std::min<std::uint64_t>(left, block.size()));
            if (!file_.read(block.data(), count)) {
                return false;
            }
            file.write({block.data(), static_cast<std::size_t>(count)});
            left -= static_cast<std::uint64_t>(count);
        }
    }
    file.write(buffer_);
    return good_;
}

void SmfTrackWriter::append(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > bufferSize && good_) {
        if (!file_.is_open()) {
            file_.open(overflow_, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc);
        }
        good_ = static_cast<bool>(file_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size())));
        buffer_.clear();
    }
    if (good_) {
        buffer_.append(bytes);
        size_ += bytes.size();
    }
}

void SmfTrackWriter::addNumber(std::uint32_t number) {
    append(Backend::VariableLength(number).bytes());
}

} // namespace Host
