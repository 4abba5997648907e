#include "host/live/EventPrinter.h"

#include "host/EventLine.h"

#include <utility>

namespace Host {

namespace {
constexpr std::size_t room = 65536;
constexpr std::size_t usualText = 65536;
} // namespace

EventPrinter::EventPrinter(std::FILE* file, std::string beforeLine)
    : beforeLine_(std::move(beforeLine)), ring_(room),
      thread_(file, "events", [this](std::string& text) { take(text); }) {}

void EventPrinter::print(Backend::Ticks tick, const Backend::MidiEngine::QelMidiMessage& message) noexcept {
    if (!ring_.push({tick.count - start_.load(std::memory_order_relaxed), message})) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
    }
    thread_.tell();
}

void EventPrinter::take(std::string& text) {
    Played played;
    while (text.size() < usualText && ring_.pop(played)) {
        text += beforeLine_;
        appendEventLine(text, played.tick, played.message);
    }
}

} // namespace Host
