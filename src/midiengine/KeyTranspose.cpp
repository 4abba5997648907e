#include "midiengine/KeyTranspose.h"

#include <array>

namespace Backend::MidiEngine {

std::int64_t transposeInKey(int note, int key, std::int32_t steps) {
    static constexpr std::array<int, 7> scale{0, 2, 4, 5, 7, 9, 11};
    const int pitchClass = ((note - key) % 12 + 12) % 12;
    int degree = 0;
    while (scale[static_cast<std::size_t>(degree)] < pitchClass) {
        ++degree;
    }
    const int target = degree + steps % 7; // -6..12
    const int octaves = target < 0 ? -1 : target / 7;
    const int distance =
        scale[static_cast<std::size_t>(target - 7 * octaves)] + 12 * octaves - scale[static_cast<std::size_t>(degree)];
    return note + std::int64_t{12} * (steps / 7) + distance;
}

} // namespace Backend::MidiEngine
