// The text form of sequences: "0|7,-,12 V5 L960".
#pragma once

#include "generators/Sequence.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Backend::SequenceManagement {

// Longer sequences and larger steps are cut off when they are read.
inline constexpr std::size_t maxSteps = 4096;
inline constexpr std::size_t maxEntries = 32; // of one step

// Steps separated by ",", entries of one step by "|"; an empty text for a sequence without steps.
[[nodiscard]] std::string textOf(const Sequence& sequence);

// Reads as far as it makes sense: an entry that is empty or begins with no number is a rest, what is not understood
// behind the number is passed over, "," at the end begins no further step, an empty text has no steps.
[[nodiscard]] Sequence sequenceOf(std::string_view text);

// What is wrong with the text, for a person: "step 3: \"x\" is neither a note offset nor a rest". Empty when it is
// fine.
[[nodiscard]] std::vector<std::string> faultsOfSequence(std::string_view text);

} // namespace Backend::SequenceManagement
