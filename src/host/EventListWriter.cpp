#include "host/EventListWriter.h"

#include "values/QelMidiMessage.h"

#include <charconv>

namespace Host {

namespace {

constexpr std::size_t bufferSize = 64 * 1024;
constexpr std::size_t longestEventLine = 32;

} // namespace

EventListWriter::EventListWriter(const std::string& target) : file_(target) {
    buffer_.reserve(bufferSize);
}

void EventListWriter::play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
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
    if (buffer_.size() + longestEventLine > bufferSize) {
        file_.write(buffer_);
        buffer_.clear();
    }
    buffer_.append(line, at);
}

Platform::Outcome EventListWriter::finish(std::int32_t) {
    file_.write(buffer_);
    buffer_.clear();
    return file_.commit();
}

} // namespace Host
