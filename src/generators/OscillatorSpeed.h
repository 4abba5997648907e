// How the speed of an oscillator is changed.
#pragma once

#include "generators/Oscillator.h"
#include "values/RelativeFixedValue.h"

#include <cstdint>
#include <span>

namespace Backend::Oscillators {

// The note lengths that a stepped speed moves through, in ticks: from 30720 to 40.
[[nodiscard]] std::span<const std::int32_t> speedLengths();

// What the speed becomes. Stepped: a relative value moves one place through those,
// whatever its size, positive to the shorter one and not beyond the ends; a fixed one is the speed. Else the value is,
// or is added to, a place on the scale of scaledSpeed.
[[nodiscard]] std::int32_t changedSpeed(const Oscillator& oscillator, const RelativeFixedValue& value);

// A scale from 0 (30720 ticks) to 127 (40 ticks), each step the same fraction; what is beyond stays at the end.
[[nodiscard]] std::int32_t scaledSpeed(std::int32_t place);
// The place that is nearest to a speed.
[[nodiscard]] std::int32_t placeOfSpeed(std::int32_t speed);

} // namespace Backend::Oscillators
