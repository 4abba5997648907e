// One track of a Standard MIDI File, read event by event.
#pragma once

#include <cstdint>

namespace Host {

// Walks over bytes that outlive it, allocates nothing and ends on any bytes whatever. Running status holds on over
// meta and system exclusive events: the standard ends it there, files in use do not.
class SmfTrack final {
public:
    enum class Found {
        message, // status, d1, d2 and port are those of a channel message
        tempo,   // microsecondsPerQuarter is
        end,     // the end-of-track event; there is nothing behind it
        fault,   // reason says what is wrong at position
    };

    // The content of the track's chunk.
    SmfTrack(const std::uint8_t* begin, const std::uint8_t* end) noexcept : at_(begin), end_(end) {}

    // Goes on to the next event that matters to a performance, passing over all others. After `end` and `fault` it
    // gives the same again.
    [[nodiscard]] Found next() noexcept;

    // Of the last event, in the file's own ticks from the start.
    [[nodiscard]] std::uint64_t time() const noexcept { return time_; }
    [[nodiscard]] std::uint8_t status() const noexcept { return status_; }
    [[nodiscard]] std::uint8_t d1() const noexcept { return d1_; }
    [[nodiscard]] std::uint8_t d2() const noexcept { return d2_; }
    // The port that the last Port meta event named; 0 without one.
    [[nodiscard]] std::uint8_t port() const noexcept { return port_; }
    [[nodiscard]] std::uint32_t microsecondsPerQuarter() const noexcept { return microsecondsPerQuarter_; }

    // Where reading stands; of a fault, the byte that is wrong or missing.
    [[nodiscard]] const std::uint8_t* position() const noexcept { return at_; }
    [[nodiscard]] const char* reason() const noexcept { return reason_; }

private:
    enum class Meta { passed, tempo, end, fault };
    [[nodiscard]] bool readNumber(std::uint32_t& number) noexcept;
    [[nodiscard]] Meta readMeta() noexcept;
    [[nodiscard]] bool skipBlock() noexcept;
    [[nodiscard]] bool skipSystemMessage() noexcept;
    [[nodiscard]] bool readMessage() noexcept;
    [[nodiscard]] bool readData(std::uint8_t& data) noexcept;
    bool fail(const char* reason) noexcept;

    const std::uint8_t* at_;
    const std::uint8_t* end_;
    std::uint64_t time_ = 0;
    const char* reason_ = nullptr;
    std::uint32_t microsecondsPerQuarter_ = 500'000;
    std::uint8_t status_ = 0;
    std::uint8_t d1_ = 0;
    std::uint8_t d2_ = 0;
    std::uint8_t port_ = 0;
    bool ended_ = false;
};

} // namespace Host
