#include "host/EventListWriter.h"

#include "host/EventLine.h"

namespace Host {

namespace {

constexpr std::size_t bufferSize = 64 * 1024;

} // namespace

EventListWriter::EventListWriter(const std::string& target) : file_(target) {
    buffer_.reserve(bufferSize);
}

void EventListWriter::play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    if (buffer_.size() + longestEventLine > bufferSize) {
        file_.write(buffer_);
        buffer_.clear();
    }
    appendEventLine(buffer_, tick, message);
}

Platform::Outcome EventListWriter::finish(std::int32_t) {
    file_.write(buffer_);
    buffer_.clear();
    return file_.commit();
}

} // namespace Host
