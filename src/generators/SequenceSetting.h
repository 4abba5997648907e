// Which sequence a layer plays, and how.
#pragma once

#include "generators/Sequence.h"

#include <memory>
#include <string>

namespace Backend::SequenceManagement {

// A value; the steps themselves are shared and never change.
struct SequenceSetting {
    std::string preset;      // the name of the sequence
    bool useNote = true;     // the step's notes are added to the incoming note, else the note stays as it came
    bool useVelocity = true; // the step's velocity offset is added
    bool useLength = true;   // a note ends after its step's length at the latest
    // What the name stands for; null, or without steps: notes pass as they came.
    std::shared_ptr<const Sequence> sequence;

    [[nodiscard]] bool hasSteps() const { return sequence && !sequence->steps.empty(); }
    // Both play the same steps, however they are applied.
    [[nodiscard]] bool hasSameSteps(const SequenceSetting& other) const {
        return sequence == other.sequence || (hasSteps() && other.hasSteps() && *sequence == *other.sequence);
    }

    // What is stored: by name.
    friend bool operator==(const SequenceSetting& a, const SequenceSetting& b) {
        return a.preset == b.preset && a.useNote == b.useNote && a.useVelocity == b.useVelocity &&
               a.useLength == b.useLength;
    }
};

} // namespace Backend::SequenceManagement
