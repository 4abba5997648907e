// The display thread: shows every message that the engine sends to those who want to see it.
#pragma once

#include "core/CriticalSection.h"
#include "core/WorkerThread.h"
#include "midiengine/DisplayListener.h"
#include "midiengine/EngineTap.h"
#include "platform/ThreadMessages.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Backend::MidiEngine {
class MidiEngine;
}

namespace Backend::Display {

// A record of each message that is not kept back travels to the display thread as a thread message. Records come from
// a pool that is made once; the display thread gives them back. The clock never waits for the display: when no record
// is free, or the queue is full, the message is dropped for the display and counted. While nobody listens there is no
// thread, and the engine does not know of the display.
class DisplayMessageManager final : private MidiEngine::EngineTap {
public:
    // wParam: the record, which the display thread gives back.
    static constexpr std::uint32_t SHOW_MESSAGE = Platform::applicationMessage + 0x67;
    // So many records may be on their way.
    static constexpr std::size_t capacity = 8192;

    // `engine` outlives the manager. `milliseconds` is asked on the clock thread: it must not block.
    DisplayMessageManager(MidiEngine::MidiEngine& engine, std::function<std::uint32_t()> milliseconds);
    // The listeners are gone by then.
    ~DisplayMessageManager();
    DisplayMessageManager(const DisplayMessageManager&) = delete;
    DisplayMessageManager& operator=(const DisplayMessageManager&) = delete;

    // From now on `listener` is told. The first one starts the thread. [any but clock and display]
    void addListener(DisplayListener& listener);
    // Once this has returned, `listener` is not called any more. The last one to go hears all that was sent before;
    // then the thread ends. [any but clock and display]
    void removeListener(DisplayListener& listener);

    // How many messages the display has missed. [any]
    [[nodiscard]] std::uint64_t droppedRecords() const { return dropped_.load(std::memory_order_relaxed); }

private:
    void passed(const MidiEngine::QelMidiMessage& message, bool swallowed) override;
    void start();
    void stop();
    void handle(const Platform::ThreadMessage& message);
    void show(const DisplayRecord& record);

    MidiEngine::MidiEngine& engine_;
    std::function<std::uint32_t()> milliseconds_;

    CriticalSection changing_; // who adds and removes listeners: one at a time
    CriticalSection lock_;     // of listeners_
    std::vector<DisplayListener*> listeners_;

    // The pool is a ring of records that are used in turn: they are given back in the order in which they were taken.
    std::unique_ptr<DisplayRecord[]> records_;
    std::size_t taken_ = 0;                 // in all; under the engine lock
    std::atomic<std::size_t> returned_ = 0; // in all; by the display thread
    std::atomic<std::uint64_t> dropped_ = 0;

    WorkerThread thread_;
};

} // namespace Backend::Display
