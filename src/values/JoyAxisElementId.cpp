#include "values/JoyAxisElementId.h"

namespace {

constexpr std::string_view letters = "XYZUVR";

} // namespace

std::int32_t JoyAxisElementId::axisFromLetter(std::string_view letter) noexcept {
    const auto place = letter.size() == 1 ? letters.find(letter) : std::string_view::npos;
    return place == std::string_view::npos ? -1 : static_cast<std::int32_t>(place);
}

std::string JoyAxisElementId::axisLetter() const {
    return axis < 0 || axis > 5 ? std::string() : std::string(letters.substr(static_cast<std::size_t>(axis), 1));
}
