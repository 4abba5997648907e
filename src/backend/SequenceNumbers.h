// The numbers by which version 2 named sequences.
#pragma once

#include "generators/SequenceSetting.h"

#include <optional>
#include <string>

namespace Backend::SequenceManagement {

inline constexpr int sequenceNumbers = 112; // 0..111

// The name that a number stands for; empty for the number of no sequence at all; nothing for a number without meaning.
[[nodiscard]] std::optional<std::string> sequenceName(int number);

// A sequence that has no file of its own, by its name.
[[nodiscard]] std::optional<Sequence> builtInSequence(const std::string& name);

// How a sequence is applied: 1: accents and rests only, 2: notes as well, anything else: notes and rests only.
[[nodiscard]] SequenceSetting numberedSetting(const std::string& name, int mode);

} // namespace Backend::SequenceManagement
