// A player that only remembers a fingerprint of what it was given.
#pragma once

#include "midiengine/MidiPlayer.h"

#include <cstdint>
#include <cstdio>
#include <string>

// Multiplying and adding is all it costs.
class Fingerprint final {
public:
    void add(std::uint32_t number) { value_ = (value_ ^ number) * 0x100000001B3ULL; }
    [[nodiscard]] std::string text() const {
        char text[17];
        std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value_));
        return text;
    }
    void clear() { value_ = seed; }

private:
    static constexpr std::uint64_t seed = 0xCBF29CE484222325ULL;
    std::uint64_t value_ = seed;
};

class BenchPlayer : public Backend::MidiEngine::MidiPlayer {
public:
    void play(const Backend::MidiEngine::QelMidiMessage& message, bool) override {
        ++played;
        fingerprint.add(message.getMidiOutShortMsg() ^ static_cast<std::uint32_t>(message.getOutput()) << 24);
    }
    void enableMidiInput(int, bool) override {}
    void enableMidiOutput(int, bool) override {}
    void eventsArrived() override {}
    void setTempo(int) override {}
    void setTempoSource(unsigned char) override {}
    [[nodiscard]] unsigned char getTempoSource() override { return 0; }

    std::uint64_t played = 0;
    Fingerprint fingerprint;
};
