// Standard MIDI Files made and taken apart byte by byte, by other code than the program's own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A big-endian number.
[[nodiscard]] std::string bigEndian(std::uint32_t number, int size);
// A variable-length number.
[[nodiscard]] std::string variableLength(std::uint32_t number);
[[nodiscard]] std::string chunk(std::string_view type, std::string_view content);
// Header and tracks; each track is the content of its chunk.
[[nodiscard]] std::string smf(int format, int division, const std::vector<std::string>& tracks);
// Bytes from hex digits; blanks are passed over.
[[nodiscard]] std::string hex(std::string_view digits);

// An event as it stands in a track: metas as FF type data, escapes as F7 data, messages with their status.
struct SmfEvent {
    std::int64_t tick;
    std::string bytes;
    bool operator==(const SmfEvent&) const = default;
};
// The tracks of a well-formed file; throws std::out_of_range where it is not.
[[nodiscard]] std::vector<std::vector<SmfEvent>> tracksOf(std::string_view file);
