// The host's half of the engine where nothing is heard: what is played goes to a sink, and time stands still.
#pragma once

#include "host/EventSink.h"
#include "midiengine/MidiPlayer.h"
#include "platform/AutoResetEvent.h"

#include <atomic>
#include <cstdint>

namespace Host {

// All its ports are open and stay so. It has no clock: a Renderer calls the slices, on what is the clock thread here.
class OfflinePlayer final : public Backend::MidiEngine::MidiPlayer {
public:
    // The sink outlives the player.
    explicit OfflinePlayer(EventSink& sink) : sink_(sink) {}

    void play(const Backend::MidiEngine::QelMidiMessage& message, bool keepHeldNotes) override;
    void enableMidiInput(int, bool) override {}
    void enableMidiOutput(int, bool) override {}
    void eventsArrived() override;
    void setTempo(int beatsPerMinute) override { tempo_ = beatsPerMinute; }
    void setTempoSource(unsigned char source) override { tempoSource_ = source; }
    [[nodiscard]] unsigned char getTempoSource() override { return tempoSource_; }

    // For the renderer; ticks count from the start of the rendering. [clock]

    [[nodiscard]] EventSink& sink() { return sink_; }
    // Where what is played without a time is played.
    void setPosition(std::int32_t tick) { position_ = tick; }
    // Between on and off, wait() also ends when events arrive.
    void watchArrivals(bool on);
    // True when events have arrived since the last question.
    [[nodiscard]] bool takeArrived() { return arrived_.exchange(false); }
    // Waits for wake().
    void wait() { wake_.wait(); }
    void wake() { wake_.signal(); } // [any]
    // The tempo asked for last, in beats a minute.
    [[nodiscard]] int tempo() const { return tempo_; }
    [[nodiscard]] std::uint64_t playedMessages() const { return playedMessages_; }

private:
    EventSink& sink_;
    std::int32_t position_ = 0;
    std::int32_t lastTick_ = 0;
    std::uint64_t playedMessages_ = 0;
    std::atomic<int> tempo_ = 120;
    std::atomic<unsigned char> tempoSource_ = 0;
    std::atomic<bool> arrived_ = false;
    std::atomic<bool> watching_ = false;
    Platform::AutoResetEvent wake_;
};

} // namespace Host
