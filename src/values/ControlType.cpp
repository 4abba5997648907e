#include "values/ControlType.h"

#include "values/TextNumbers.h"
#include "values/Words.h"

#include <array>

namespace Backend::Controls {

namespace {

// At the number of their kind.
constexpr std::array<std::string_view, 6> words{"", "edit", "vfader", "hfader", "knob", "label"};

} // namespace

ControlType::ControlType(std::string_view text) noexcept
    : kind_(static_cast<Kind>(placeOf(trimmed(text), words).value_or(0))) {}

std::string ControlType::toXmlString() const {
    return std::string(words[static_cast<std::size_t>(kind_)]);
}

} // namespace Backend::Controls
