// Writes what is played as lines of text while it is played.
#pragma once

#include "core/SpscRing.h"
#include "host/live/PrinterThread.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>

namespace Host {

// One line of appendEventLine a message.
class EventPrinter final {
public:
    // `file` outlives the printer, whose end writes what was given to it before. `beforeLine` is written before each
    // line.
    explicit EventPrinter(std::FILE* file, std::string beforeLine = {});

    // Lines count their ticks from here; engineTimeOrigin at first. [any]
    void setStart(Backend::Ticks start) noexcept { start_.store(start.count, std::memory_order_relaxed); }

    // `tick` is the engine's. What finds no room is dropped and counted. [any thread under the engine lock]
    void print(Backend::Ticks tick, const Backend::MidiEngine::QelMidiMessage& message) noexcept;

    // False once a line could not be written. [any]
    [[nodiscard]] bool isGood() const noexcept { return thread_.isGood(); }
    [[nodiscard]] std::uint64_t dropped() const noexcept { return dropped_.load(std::memory_order_relaxed); } // [any]
    // How many times something was written. [any]
    [[nodiscard]] std::uint64_t written() const noexcept { return thread_.written(); }

private:
    struct Played {
        std::int32_t tick = 0; // from the start
        Backend::MidiEngine::QelMidiMessage message;
    };
    void take(std::string& text);

    std::string beforeLine_;
    std::atomic<std::int32_t> start_ = Backend::engineTimeOrigin.count;
    Backend::SpscRing<Played> ring_;
    std::atomic<std::uint64_t> dropped_ = 0;
    PrinterThread thread_; // ends first
};

} // namespace Host
