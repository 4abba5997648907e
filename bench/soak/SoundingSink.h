// Knows what a synthesizer at the other end would sound by now.
#pragma once

#include "host/EventSink.h"

#include <bitset>
#include <cstdint>
#include <string>

namespace Soak {

class SoundingSink final : public Host::EventSink {
public:
    void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) override;
    void setTempo(std::int32_t, int) override {}
    [[nodiscard]] bool isGood() const override { return true; }
    [[nodiscard]] Platform::Outcome finish(std::int32_t) override { return Platform::success(); }

    // Nobody hears that output any more.
    void forget(int output);

    [[nodiscard]] std::size_t sounding() const { return sounding_.count(); }
    // The first few places that sound, for people.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::uint64_t messages() const { return messages_; }
    // Differs when anything that was played differs.
    [[nodiscard]] std::uint64_t fingerprint() const { return fingerprint_; }

private:
    std::bitset<std::size_t{128} * 16 * 128> sounding_; // by output, channel, note
    std::uint64_t messages_ = 0;
    std::uint64_t fingerprint_ = 14695981039346656037ULL;
};

} // namespace Soak
