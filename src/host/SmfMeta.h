// The meta events of a Standard MIDI File that mean something to us.
#pragma once

#include <cstdint>

namespace Host {

// Their type byte.
namespace SmfMeta {
inline constexpr std::uint8_t trackName = 0x03;
inline constexpr std::uint8_t port = 0x21; // one byte: the MIDI port of what follows
inline constexpr std::uint8_t endOfTrack = 0x2F;
inline constexpr std::uint8_t tempo = 0x51; // three bytes: microseconds a quarter note
} // namespace SmfMeta

} // namespace Host
