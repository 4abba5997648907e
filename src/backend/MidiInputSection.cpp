#include "backend/MidiInputSection.h"

#include "core/MessageParameters.h"
#include "midiinput/IncomingMessage.h"
#include "midiinput/InputRules.h"
#include "platform/ThreadMessages.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace Backend {

using MidiEngine::MessageType;
using MidiInput::StartedNotes;

namespace {

// Sets a flag for as long as it lives.
class Raised final {
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
};
} // namespace

MidiInputSection::MidiInputSection(const PortSection& ports, const MidiInput::ConfigurationSection& configurations,
                                   MidiEngine::MidiEngineMessageManager& engine, const Explain& explain)
    : ports_(ports), configurations_(configurations), engine_(engine), explain_(explain) {
    constexpr std::size_t usualPress = 64; // notes
    released_.reserve(usualPress);
}

void MidiInputSection::process(const Message& message) {
    handle(message);
}

void MidiInputSection::process(const std::vector<Message>& messages) {
    played_.reserve(messages.size());
    {
        const Raised collecting(collecting_);
        for (const Message& message : messages) {
            handle(message);
        }
    }
    flush();
}

void MidiInputSection::inputsChanged() {
    constexpr int mostInputs = 128;
    for (int input = 0; input < mostInputs; ++input) {
        if (!ports_.isInputEnabled(input)) {
            started_.forget(static_cast<std::int8_t>(input));
        }
    }
}

void MidiInputSection::handle(const Message& message) {
    if (!ports_.isInputEnabled(message.getInput())) {
        return;
    }
    if (message.getMessageType() == MessageType::systemExclusive) {
        ++droppedSysEx_;
        return;
    }
    show(message);
    const Message incoming = MidiInput::asHandled(message);
    released_.clear();
    const bool ends = incoming.isNoteOff() && started_.takePress(incoming, released_);
    if (incoming.isNoteOn()) {
        started_.beginPress(incoming);
    }
    // The map stays as it is while its translations replace it.
    const std::shared_ptr<const MidiInput::MidiEventConfigurationMap> map = configurations_.current();
    const MidiInput::LookUp found = map->lookUp(incoming);
    if (explain_) {
        steps_ = {};
        steps_.incoming = incoming;
        steps_.lookUp = found;
    }
    MidiInput::applyRules(
        found, incoming, [&](const Tried& tried) { translate(incoming, tried); },
        [&](const Message& passedOn) {
            if (!ends) {
                passOn(passedOn);
            }
        });
    if (ends) {
        release(incoming);
    }
    if (explain_) {
        explain_(steps_);
    }
}

void MidiInputSection::show(const Message& incoming) const {
    for (Platform::ThreadId thread = shownTo_; thread != 0; thread = shownTo_) {
        const bool posted = postCopy(incoming, [&](std::uintptr_t copy) {
            return Platform::postThreadMessage(thread, {MidiInput::showIncomingMessage, copy, 0});
        });
        if (posted) {
            return;
        }
        Platform::sleepMilliseconds(Platform::postRetryMilliseconds);
    }
}

void MidiInputSection::translate(const Message& incoming, const Tried& tried) {
    if (tried.message) {
        play(*tried.message);
        remember(incoming, *tried.message);
    } else if (tried.conditionHeld) {
        flush(); // what it changes comes behind what was played before
        tried.translation->execute(incoming);
    }
    if (explain_) {
        steps_.tried.push_back(tried);
    }
}

void MidiInputSection::remember(const Message& incoming, const Message& sent) {
    if (sent.isNoteOn() && incoming.isNoteOn()) {
        started_.add(sent);
    } else if (sent.isNoteOff()) {
        if (incoming.isNoteOn()) {
            started_.remove(sent);
        }
        const auto ended = std::find(released_.begin(), released_.end(), StartedNotes::Note::of(sent));
        if (ended != released_.end()) {
            released_.erase(ended);
        }
    }
}

void MidiInputSection::passOn(const Message& message) {
    play(message);
    if (message.isNoteOn()) {
        started_.add(message);
    }
    if (explain_) {
        steps_.passedOn = message;
    }
}

void MidiInputSection::release(const Message& noteOff) {
    for (const StartedNotes::Note& note : released_) {
        const Message end = note.ended(noteOff);
        play(end);
        if (explain_) {
            steps_.ended.push_back(end);
        }
    }
}

void MidiInputSection::play(const Message& message) {
    if (collecting_) {
        played_.push_back(message);
    } else {
        engine_.postPlayMidi(message);
    }
}

void MidiInputSection::flush() {
    if (!played_.empty()) {
        engine_.postPlayMidi(std::exchange(played_, {}));
    }
}

} // namespace Backend
