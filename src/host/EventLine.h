// One played message as a line of text.
#pragma once

#include <cstdint>
#include <string>

namespace Backend::MidiEngine {
class QelMidiMessage;
}

namespace Host {

// Longer than any line that appendEventLine makes.
inline constexpr std::size_t longestEventLine = 48;

// Appends "TICK OUTPUT STATUS [D1 [D2]]" and an end of line: the status as two upper-case hex digits with the channel,
// all else in decimal, as many data bytes as the message has. Allocates only where the text has no room. [any]
void appendEventLine(std::string& text, std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message);

} // namespace Host
