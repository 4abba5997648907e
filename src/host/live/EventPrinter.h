// Writes what is played as lines of text while it is played.
#pragma once

#include "core/SpscRing.h"
#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace Host {

// One line of appendEventLine a message, written and flushed at once by a thread of its own.
class EventPrinter final {
public:
    // `file` outlives the printer. `beforeLine` is written before each line.
    explicit EventPrinter(std::FILE* file, std::string beforeLine = {});
    // Writes what was given to it before.
    ~EventPrinter();
    EventPrinter(const EventPrinter&) = delete;
    EventPrinter& operator=(const EventPrinter&) = delete;

    // Lines count their ticks from here; engineTimeOrigin at first. [any]
    void setStart(Backend::Ticks start) noexcept { start_.store(start.count, std::memory_order_relaxed); }

    // `tick` is the engine's. What finds no room is dropped and counted. [any thread under the engine lock]
    void print(Backend::Ticks tick, const Backend::MidiEngine::QelMidiMessage& message) noexcept;

    // False once a line could not be written. [any]
    [[nodiscard]] bool isGood() const noexcept { return good_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::uint64_t dropped() const noexcept { return dropped_.load(std::memory_order_relaxed); } // [any]
    // How many times something was written. [any]
    [[nodiscard]] std::uint64_t written() const noexcept { return written_.load(std::memory_order_relaxed); }

private:
    struct Played {
        std::int32_t tick = 0; // from the start
        Backend::MidiEngine::QelMidiMessage message;
    };
    void work();

    std::FILE* file_;
    std::string beforeLine_;
    std::atomic<std::int32_t> start_ = Backend::engineTimeOrigin.count;
    Backend::SpscRing<Played> ring_;
    Platform::AutoResetEvent wake_;
    std::atomic<bool> stopping_ = false;
    std::atomic<bool> good_ = true;
    std::atomic<std::uint64_t> dropped_ = 0;
    std::atomic<std::uint64_t> written_ = 0;
    std::unique_ptr<Platform::Thread> thread_;
};

} // namespace Host
