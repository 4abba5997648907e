// A player without devices: writes down what it is given, and knows what a real synthesizer would sound by now.
#pragma once

#include "midiengine/MidiPlayer.h"
#include "platform/AutoResetEvent.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace TestSupport {

// "TICK OUTPUT STATUS D1 D2" as the host writes events, ticks from engineTimeOrigin, "-" for a message without time.
inline std::string lineOf(const Backend::MidiEngine::QelMidiMessage& message) {
    char status[8];
    std::snprintf(status, sizeof status, "%02X", static_cast<unsigned>(message.getMidiOutShortMsg() & 0xFF));
    std::string line = message.isTimedEvent() ? std::to_string((message.getPpq() - Backend::engineTimeOrigin).count)
                                              : std::string("-");
    line += " " + std::to_string(message.getOutput()) + " " + status;
    const int size = message.getMidiMessage().getMessageSize();
    line += size > 0 ? " " + std::to_string(message.getD1()) : "";
    line += size > 1 ? " " + std::to_string(message.getD2()) : "";
    return line;
}

// A note on an output and channel.
using Sound = std::tuple<int, int, int>;

// All calls may come from any thread.
class FakePlayer final : public Backend::MidiEngine::MidiPlayer {
public:
    void play(const Backend::MidiEngine::QelMidiMessage& message, bool) override {
        const std::lock_guard guard(mutex_);
        lines_.push_back(lineOf(message));
        hostTimes_.push_back(message.getHostTime());
        const Sound sound{message.getOutput(), message.getChannel(), message.getD1()};
        if (message.isNoteOn()) {
            sounding_.insert(sound);
        } else if (message.isNoteOff()) {
            sounding_.erase(sound);
        }
    }
    void enableMidiInput(int port, bool on) override { request("input", port, on); }
    void enableMidiOutput(int port, bool on) override { request("output", port, on); }
    void eventsArrived() override {
        arrived_ = true;
        wake();
    }
    void setTempo(int beatsPerMinute) override { request("tempo", beatsPerMinute); }
    void setTempoSource(unsigned char source) override {
        tempoSource_ = source;
        request("tempoSource", source);
    }
    [[nodiscard]] unsigned char getTempoSource() override { return tempoSource_; }
    [[nodiscard]] TickTime tickTime() override { return tick; }

    // What was played since the last call.
    [[nodiscard]] std::vector<std::string> takeLines() {
        const std::lock_guard guard(mutex_);
        return std::exchange(lines_, {});
    }
    // The host times of what was played since the last call.
    [[nodiscard]] std::vector<std::int64_t> takeHostTimes() {
        const std::lock_guard guard(mutex_);
        return std::exchange(hostTimes_, {});
    }
    // What else the engine asked for since the last call: "tempo 120", "output 1 off".
    [[nodiscard]] std::vector<std::string> takeRequests() {
        const std::lock_guard guard(mutex_);
        return std::exchange(requests_, {});
    }
    [[nodiscard]] std::set<Sound> sounding() {
        const std::lock_guard guard(mutex_);
        return sounding_;
    }
    // The device behind an output is gone.
    void unplug(int output) {
        const std::lock_guard guard(mutex_);
        std::erase_if(sounding_, [output](const Sound& sound) { return std::get<0>(sound) == output; });
    }

    TickTime tick; // of the device; set while nothing is played

    // For a clock that sleeps until something arrives.
    [[nodiscard]] bool takeArrived() { return arrived_.exchange(false); }
    void wait() { wake_.wait(); }
    void wake() { wake_.signal(); }

private:
    void request(const std::string& what, int number) {
        const std::lock_guard guard(mutex_);
        requests_.push_back(what + " " + std::to_string(number));
    }
    void request(const std::string& what, int port, bool on) {
        const std::lock_guard guard(mutex_);
        requests_.push_back(what + " " + std::to_string(port) + (on ? " on" : " off"));
    }

    std::mutex mutex_;
    std::vector<std::string> lines_;
    std::vector<std::int64_t> hostTimes_;
    std::vector<std::string> requests_;
    std::set<Sound> sounding_;
    std::atomic<bool> arrived_ = false;
    std::atomic<unsigned char> tempoSource_ = 0;
    Platform::AutoResetEvent wake_;
};

} // namespace TestSupport
