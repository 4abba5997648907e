// Numbers as the chunks of Standard MIDI Files (SMF 1.0) hold them: the highest byte first.
#pragma once

#include <cstdint>
#include <string>

namespace Backend {

// The lowest `size` bytes of the number, 0 to 4.
[[nodiscard]] std::string bigEndian(std::uint32_t number, int size);

} // namespace Backend
