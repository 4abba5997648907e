#include "values/SelectControlType.h"

#include "values/Words.h"

#include <array>

namespace {

// At the number of their kind; "" stands for the cell.
constexpr std::array<std::string_view, 7> words{"up", "down", "left", "right", "selected", "", "all"};

} // namespace

SelectControlType::SelectControlType(std::string_view text) noexcept {
    if (const auto place = text.empty() ? std::nullopt : placeOf(text, words)) {
        kind_ = static_cast<Kind>(*place);
    } else {
        *this = SelectControlType(Cell::fromText(text));
    }
}

std::string SelectControlType::toXmlString() const {
    return kind_ == Kind::fixed ? cell_.toXmlString() : std::string(words[static_cast<std::size_t>(kind_)]);
}
