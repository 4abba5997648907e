// What becomes of the messages that arrive on MIDI inputs.
#pragma once

#include "backend/PortSection.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "values/QelMidiMessage.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <vector>

namespace Backend {

// Messages from inputs that are on go to the layers: on the default channel and output. A Note On with velocity 0
// becomes a Note Off with velocity 100. System Exclusive is dropped and counted. [backend]
class MidiInputSection final {
public:
    // Both outlive the section.
    MidiInputSection(const PortSection& ports, MidiEngine::MidiEngineMessageManager& engine)
        : ports_(ports), engine_(engine) {}

    void process(const MidiEngine::QelMidiMessage& message);
    void process(const std::vector<MidiEngine::QelMidiMessage>& messages);

    [[nodiscard]] std::uint64_t droppedSysEx() const { return droppedSysEx_; } // [any]

private:
    // The message as it goes on; nothing when it is ignored.
    [[nodiscard]] std::optional<MidiEngine::QelMidiMessage> accept(const MidiEngine::QelMidiMessage& message);

    const PortSection& ports_;
    MidiEngine::MidiEngineMessageManager& engine_;
    std::atomic<std::uint64_t> droppedSysEx_ = 0;
};

} // namespace Backend
