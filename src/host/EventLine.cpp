#include "host/EventLine.h"

#include "values/QelMidiMessage.h"

#include <charconv>

namespace Host {

void appendEventLine(std::string& text, std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    char line[longestEventLine];
    char* at = line;
    const auto number = [&](int value) { at = std::to_chars(at, line + sizeof line, value).ptr; };
    const std::uint32_t bytes = message.getMidiOutShortMsg();
    const int size = message.getMidiMessage().getMessageSize();

    number(tick);
    *at++ = ' ';
    number(message.getOutput());
    *at++ = ' ';
    *at++ = "0123456789ABCDEF"[bytes >> 4 & 0x0F];
    *at++ = "0123456789ABCDEF"[bytes & 0x0F];
    for (int index = 1; index <= size; ++index) {
        *at++ = ' ';
        number(static_cast<int>(bytes >> (8 * index) & 0xFF));
    }
    *at++ = '\n';
    text.append(line, at);
}

} // namespace Host
