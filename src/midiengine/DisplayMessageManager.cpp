#include "midiengine/DisplayMessageManager.h"

#include "midiengine/MidiEngine.h"

#include <algorithm>
#include <cassert>
#include <mutex>
#include <utility>

namespace Backend::Display {

namespace {
using Guard = std::lock_guard<CriticalSection>;
} // namespace

DisplayMessageManager::DisplayMessageManager(MidiEngine::MidiEngine& engine,
                                             std::function<std::uint32_t()> milliseconds)
    : engine_(engine), milliseconds_(std::move(milliseconds)),
      thread_(
          "tembrel-display", [] {}, [this](const Platform::ThreadMessage& message) { handle(message); }) {}

DisplayMessageManager::~DisplayMessageManager() {
    assert(!thread_.isRunning());
}

void DisplayMessageManager::addListener(DisplayListener& listener) {
    const Guard alone(changing_);
    {
        const Guard guard(lock_);
        listeners_.push_back(&listener);
    }
    if (!thread_.isRunning()) {
        start();
    }
}

void DisplayMessageManager::removeListener(DisplayListener& listener) {
    const Guard alone(changing_);
    const bool last =
        std::count(listeners_.begin(), listeners_.end(), &listener) == static_cast<std::ptrdiff_t>(listeners_.size());
    if (last && thread_.isRunning()) { // it still hears what is on its way
        stop();
    }
    const Guard guard(lock_);
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), &listener), listeners_.end());
}

void DisplayMessageManager::start() {
    if (!records_) {
        records_ = std::make_unique<DisplayRecord[]>(capacity);
    }
    thread_.start();
    engine_.addTap(*this);
}

void DisplayMessageManager::stop() {
    engine_.removeTap(*this);
    thread_.stop();
}

void DisplayMessageManager::passed(const MidiEngine::QelMidiMessage& message, bool swallowed) {
    if (swallowed) {
        return;
    }
    if (taken_ - returned_.load(std::memory_order_acquire) == capacity) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    DisplayRecord& record = records_[taken_ % capacity];
    record.message = message.getMidiMessage();
    record.output = message.getOutput();
    record.input = message.getInput();
    record.zone = message.getZone();
    record.layer = engine_.sendingLayer();
    record.milliseconds = milliseconds_();
    if (!thread_.tryPost({SHOW_MESSAGE, reinterpret_cast<std::uintptr_t>(&record), 0})) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    ++taken_;
}

void DisplayMessageManager::handle(const Platform::ThreadMessage& message) {
    if (message.id == SHOW_MESSAGE) {
        show(*reinterpret_cast<const DisplayRecord*>(message.wParam));
        returned_.fetch_add(1, std::memory_order_release);
    }
}

void DisplayMessageManager::show(const DisplayRecord& record) {
    const Guard guard(lock_);
    for (DisplayListener* listener : listeners_) {
        listener->messageSent(record);
    }
}

} // namespace Backend::Display
