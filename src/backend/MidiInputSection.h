// The road of the messages that arrive on MIDI inputs.
#pragma once

#include "backend/PortSection.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "midiinput/ConfigurationSection.h"
#include "midiinput/InputSteps.h"
#include "midiinput/StartedNotes.h"
#include "platform/Threads.h"
#include "values/QelMidiMessage.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

namespace Backend {

// Messages from inputs that are on run the translations that are configured for them; one for which nothing is
// configured goes to the layers, on the default channel. System Exclusive is dropped and counted.
//
// A key ends what it has started. What its Note On came to, translated or not, is remembered; its Note Off runs its own
// translations, and whatever they have not ended is ended then, whatever has become of the configurations. Such a Note
// Off that is not configured does nothing else: what would be passed on is the end of a note that it never began.
// [backend]
class MidiInputSection final {
public:
    using Message = MidiEngine::QelMidiMessage;
    // Told of each message once it has been handled. [backend]
    using Explain = std::function<void(const MidiInput::InputSteps&)>;

    // All outlive the section. An empty `explain` is told nothing.
    MidiInputSection(const PortSection& ports, const MidiInput::ConfigurationSection& configurations,
                     MidiEngine::MidiEngineMessageManager& engine, const Explain& explain);

    void process(const Message& message);
    // The same for each in order; what is played reaches the engine at once.
    void process(const std::vector<Message>& messages);
    // Inputs may have been closed: their keys are let go.
    void inputsChanged();

    // Who is posted a copy of each message that arrives (MidiInput::showIncomingMessage); 0: nobody. While that thread
    // does not take it, everything that arrives waits. [any]
    void showTo(Platform::ThreadId thread) { shownTo_ = thread; }
    [[nodiscard]] std::uint64_t droppedSysEx() const { return droppedSysEx_; } // [any]

private:
    using Tried = MidiInput::InputSteps::Tried;

    void handle(const Message& incoming);
    void show(const Message& incoming) const;
    void translate(const Message& incoming, const Tried& tried);
    // What a translation has sent starts or ends notes of the key.
    void remember(const Message& incoming, const Message& sent);
    void passOn(const Message& message);
    // The notes in released_ end.
    void release(const Message& noteOff);
    void play(const Message& message);
    // Hands what is to be played to the engine.
    void flush();

    const PortSection& ports_;
    const MidiInput::ConfigurationSection& configurations_;
    MidiEngine::MidiEngineMessageManager& engine_;
    const Explain& explain_;
    MidiInput::StartedNotes started_;
    std::vector<MidiInput::StartedNotes::Note> released_; // by the Note Off that is being handled; keeps its memory
    std::vector<Message> played_;                         // not yet handed to the engine
    bool collecting_ = false;                             // what is played waits in played_
    MidiInput::InputSteps steps_;                         // of the message that is being handled
    std::atomic<Platform::ThreadId> shownTo_ = 0;
    std::atomic<std::uint64_t> droppedSysEx_ = 0;
};

} // namespace Backend
