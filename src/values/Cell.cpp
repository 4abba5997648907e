#include "values/Cell.h"

#include "values/TextNumbers.h"

Cell Cell::fromText(std::string_view text) noexcept {
    const auto comma = text.find(',');
    Cell cell;
    cell.x = readDecimal(text.substr(0, comma)).value_or(-1);
    if (comma != std::string_view::npos) {
        cell.y = readDecimal(text.substr(comma + 1)).value_or(-1);
    }
    return cell;
}

std::string Cell::toXmlString() const {
    return std::to_string(x) + "," + std::to_string(y);
}
