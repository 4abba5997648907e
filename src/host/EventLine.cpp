#include "host/EventLine.h"

#include "values/QelMidiMessage.h"

#include <charconv>

namespace Host {

namespace {

void appendNumber(std::string& text, int number) {
    char digits[16];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

} // namespace

void appendEventLine(std::string& text, std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    constexpr const char* hexDigits = "0123456789ABCDEF";
    const std::uint32_t bytes = message.getMidiOutShortMsg();
    const int size = message.getMidiMessage().getMessageSize();

    appendNumber(text, tick);
    text += ' ';
    appendNumber(text, message.getOutput());
    text += ' ';
    text += hexDigits[bytes >> 4 & 0x0F];
    text += hexDigits[bytes & 0x0F];
    for (int index = 1; index <= size; ++index) {
        text += ' ';
        appendNumber(text, static_cast<int>(bytes >> (8 * index) & 0xFF));
    }
    text += '\n';
}

} // namespace Host
