#include "input/Control.h"

#include <algorithm>

namespace Backend::Controls {

std::int32_t Control::clamped(std::int32_t number) const noexcept {
    return std::clamp(number, std::min(min, max), std::max(min, max));
}

} // namespace Backend::Controls
