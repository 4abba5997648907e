// A short pattern of steps that a layer plays from the notes it receives.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend::SequenceManagement {

// One note of a step.
struct StepEntry final : public XmlItem {
    static constexpr std::int32_t usualLength = 1920;

    std::int32_t noteOffset = 0;       // semitones, added to the incoming note
    std::int32_t velocityOffset = 0;   // added to the incoming velocity
    std::int32_t length = usualLength; // ticks; below 1 counts as 1
    bool rest = false;                 // plays nothing

    // "7 V-10", "12 V5 L960", "-": without a velocity offset of 0 and the usual length.
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const StepEntry& a, const StepEntry& b) {
        return a.noteOffset == b.noteOffset && a.velocityOffset == b.velocityOffset && a.length == b.length &&
               a.rest == b.rest;
    }
};

using Step = std::vector<StepEntry>;

struct Sequence {
    std::vector<Step> steps;

    bool operator==(const Sequence&) const = default;
};

} // namespace Backend::SequenceManagement
