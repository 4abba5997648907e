// One track of a Standard MIDI File that is being made.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace Host {

class ResultFile;

// Holds the last bytes in memory and the ones before in a file of its own, which it removes.
class SmfTrackWriter final {
public:
    // `overflow` is the file, made when memory is not to hold more.
    explicit SmfTrackWriter(std::filesystem::path overflow);
    ~SmfTrackWriter();
    SmfTrackWriter(const SmfTrackWriter&) = delete;
    SmfTrackWriter& operator=(const SmfTrackWriter&) = delete;

    // An event at `tick`, which is no earlier than the one before: the bytes behind its delta time.
    void add(std::int32_t tick, std::string_view bytes);
    // Meta event of a type, with its data.
    void addMeta(std::int32_t tick, std::uint8_t type, std::string_view data);

    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }
    [[nodiscard]] bool isGood() const noexcept { return good_; }
    // Appends the whole track, of less than 4 GiB, with its chunk header in front; false when the overflow cannot be
    // read again.
    [[nodiscard]] bool copyTo(ResultFile& file);

private:
    void append(std::string_view bytes);
    void addNumber(std::uint32_t number);

    std::filesystem::path overflow_;
    std::fstream file_;
    std::string buffer_;
    std::uint64_t size_ = 0;
    std::int32_t tick_ = 0;
    bool good_ = true;
};

} // namespace Host
