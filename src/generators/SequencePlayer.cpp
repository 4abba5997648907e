#include "generators/SequencePlayer.h"

#include "values/NoteFolding.h"

#include <algorithm>
#include <utility>

namespace Backend::SequenceManagement {

using MidiEngine::QelMidiMessage;

namespace {
// More notes at once need room to be made, once.
constexpr std::size_t usualRoom = 64;
constexpr std::int32_t longestLength = 40'000'000; // hours; the sum stays below 2^31

std::int8_t shiftedVelocity(std::int8_t velocity, std::int32_t offset) {
    return static_cast<std::int8_t>(std::clamp<std::int64_t>(std::int64_t{velocity} + offset, 0, 127));
}
} // namespace

SequencePlayer::SequencePlayer(SequenceSetting setting) : setting_(std::move(setting)) {
    begun_.reserve(usualRoom);
}

void SequencePlayer::start(const QelMidiMessage& noteOn, Voice voice, Ticks now, NoteSink& sink) {
    if (!setting_.hasSteps()) {
        begin(noteOn, voice, {}, sink);
        return;
    }
    for (const StepEntry& entry : setting_.sequence->steps[step_]) {
        if (entry.rest) {
            continue;
        }
        Begun begun;
        QelMidiMessage shifted = noteOn;
        if (setting_.useNote) {
            shifted.setD1(MidiEngine::foldNote(std::int64_t{noteOn.getD1()} + entry.noteOffset));
        }
        if (setting_.useVelocity) {
            begun.velocityOffset = entry.velocityOffset;
            shifted.setD2(shiftedVelocity(noteOn.getD2(), entry.velocityOffset));
        }
        if (setting_.useLength) {
            begun.end = now + Ticks{std::clamp(entry.length, 1, longestLength)};
        }
        begin(shifted, voice, begun, sink);
    }
}

void SequencePlayer::begin(const QelMidiMessage& noteOn, Voice voice, Begun begun, NoteSink& sink) {
    begun.how = sink.begin(noteOn);
    if (begun.how != NoteBegun::nowhere) {
        begun.noteOn = noteOn;
        begun.voice = voice;
        begun_.push_back(begun);
    }
}

template <typename Which, typename Velocity>
void SequencePlayer::endThose(NoteSink& sink, Which which, Velocity velocity) {
    const auto kept = std::remove_if(begun_.begin(), begun_.end(), [&](const Begun& begun) {
        if (!which(begun)) {
            return false;
        }
        QelMidiMessage noteOff = begun.noteOn;
        noteOff.setToNoteOff();
        noteOff.setD2(velocity(begun));
        sink.end(noteOff, begun.how);
        return true;
    });
    begun_.erase(kept, begun_.end());
}

void SequencePlayer::end(Voice voice, NoteSink& sink) {
    endThose(
        sink, [voice](const Begun& begun) { return begun.voice == voice; },
        [](const Begun& begun) { return begun.noteOn.getD2(); });
}

void SequencePlayer::end(Voice voice, const QelMidiMessage& noteOff, NoteSink& sink) {
    endThose(
        sink, [voice](const Begun& begun) { return begun.voice == voice; },
        [&noteOff](const Begun& begun) { return shiftedVelocity(noteOff.getD2(), begun.velocityOffset); });
}

void SequencePlayer::advance(Ticks now, NoteSink& sink) {
    endThose(
        sink, [now](const Begun& begun) { return begun.end != noTicks && begun.end <= now; },
        [](const Begun& begun) { return begun.noteOn.getD2(); });
}

void SequencePlayer::nextStep() {
    if (setting_.hasSteps()) {
        step_ = (step_ + 1) % setting_.sequence->steps.size();
    }
}

void SequencePlayer::reset() {
    begun_.clear();
    step_ = 0;
}

bool SequencePlayer::isSounding(Voice voice) const {
    return std::any_of(begun_.begin(), begun_.end(), [voice](const Begun& begun) { return begun.voice == voice; });
}

void SequencePlayer::forgetOutput(std::int8_t output) {
    std::erase_if(begun_, [output](const Begun& begun) { return begun.noteOn.getOutput() == output; });
}

} // namespace Backend::SequenceManagement
