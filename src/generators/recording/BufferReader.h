// The content of a buffer file, event by event.
#pragma once

#include <cstdint>
#include <string_view>

namespace Backend::Recording {

inline constexpr std::uint32_t tickMilliseconds = 5;

// An event of a buffer: the time since the one before, in ticks of tickMilliseconds, and the message.
struct BufferEvent {
    std::uint32_t ticks = 0;
    std::string_view message; // status and data
};

// Walks over a bare sequence of track events (SMF 1.0) and ends on any bytes whatever: at their end, or at the first
// that belong to no whole message. Running status is understood; meta and system exclusive events end the walk.
class BufferReader final {
public:
    // `bytes` outlive the reader.
    explicit BufferReader(std::string_view bytes) noexcept : begin_(bytes.data()), bytes_(bytes) {}

    // False at the end, and ever after. The message lives until the next call.
    [[nodiscard]] bool next(BufferEvent& event) noexcept;
    // Up to here whole events have been read.
    [[nodiscard]] std::size_t position() const noexcept { return static_cast<std::size_t>(bytes_.data() - begin_); }

private:
    const char* begin_;
    std::string_view bytes_; // what is left
    std::uint8_t runningStatus_ = 0;
    char unpacked_[3]{};
};

} // namespace Backend::Recording
