#include "host/live/EventPrinter.h"

#include "host/EventLine.h"

namespace Host {

namespace {
constexpr std::size_t room = 65536;
constexpr std::size_t usualText = 65536;
} // namespace

EventPrinter::EventPrinter(std::FILE* file, std::string beforeLine)
    : file_(file), beforeLine_(std::move(beforeLine)), ring_(room) {
    thread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("events");
        work();
    });
    thread_->resume();
}

EventPrinter::~EventPrinter() {
    stopping_.store(true);
    wake_.signal();
    thread_->join();
}

void EventPrinter::print(Backend::Ticks tick, const Backend::MidiEngine::QelMidiMessage& message) noexcept {
    if (!ring_.push({tick.count - start_.load(std::memory_order_relaxed), message})) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
    }
    wake_.signal();
}

void EventPrinter::work() {
    std::string text;
    for (bool last = false; !last;) {
        last = stopping_.load(); // what was given before the stop is still written
        Played played;
        while (text.size() < usualText && ring_.pop(played)) {
            text += beforeLine_;
            appendEventLine(text, played.tick, played.message);
        }
        if (text.empty()) {
            if (!last) {
                wake_.wait();
            }
            continue;
        }
        last = false;
        const bool written = std::fwrite(text.data(), 1, text.size(), file_) == text.size();
        if (!written || std::fflush(file_) != 0) {
            good_.store(false, std::memory_order_relaxed);
        }
        text.clear();
        written_.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace Host
