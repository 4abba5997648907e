// Transposition by steps of a major scale.
#pragma once

#include <cstdint>

namespace Backend::MidiEngine {

// `note` moved by `steps` degrees of the major scale on the pitch class `key` (0..11): every seven steps are an
// octave; the rest, split off toward zero, moves the note by the distance from its own degree to the target degree.
// A note between two scale notes counts as the degree above it and keeps its place beside it. Not folded.
[[nodiscard]] std::int64_t transposeInKey(int note, int key, std::int32_t steps);

} // namespace Backend::MidiEngine
