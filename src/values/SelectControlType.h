// Which on-screen control is meant.
#pragma once

#include "values/Cell.h"
#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class SelectControlType final : public XmlItem {
public:
    // The numbers travel in window messages.
    enum class Kind : std::int32_t { up = 0, down = 1, left = 2, right = 3, selected = 4, fixed = 5, all = 6 };

    // The selected control.
    SelectControlType() = default;
    explicit SelectControlType(Kind kind) noexcept : kind_(kind) {}
    explicit SelectControlType(const Cell& cell) noexcept : kind_(Kind::fixed), cell_(cell) {}
    // "up", "down", "left", "right", "selected", "all" exactly; any other text is a cell.
    explicit SelectControlType(std::string_view text) noexcept;

    [[nodiscard]] Kind getKind() const noexcept { return kind_; }
    // Of kind fixed only; else (-1, -1).
    [[nodiscard]] const Cell& getCell() const noexcept { return cell_; }

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const SelectControlType& a, const SelectControlType& b) noexcept {
        return a.kind_ == b.kind_ && a.cell_ == b.cell_;
    }

private:
    Kind kind_ = Kind::selected;
    Cell cell_;
};
