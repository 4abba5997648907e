#include "values/SelectType.h"

#include "values/TextNumbers.h"
#include "values/Words.h"

#include <array>

namespace {

// At the number of their kind; "" stands for the fixed index.
constexpr std::array<std::string_view, 5> words{"up", "down", "selected", "", "all"};

} // namespace

SelectType::SelectType(std::string_view text) noexcept {
    if (const auto place = text.empty() ? std::nullopt : placeOf(text, words)) {
        kind_ = static_cast<Kind>(*place);
    } else {
        *this = fixed(readDecimal(text).value_or(0));
    }
}

SelectType SelectType::fixed(std::int32_t index) noexcept {
    SelectType select(Kind::fixed);
    select.index_ = index;
    return select;
}

std::string SelectType::toXmlString() const {
    return kind_ == Kind::fixed ? std::to_string(index_) : std::string(words[static_cast<std::size_t>(kind_)]);
}
