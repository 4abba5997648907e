// Which item of a list is meant.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class SelectType final : public XmlItem {
public:
    enum class Kind : std::int32_t { up = 0, down = 1, selected = 2, fixed = 3, all = 4 };

    // The selected item.
    SelectType() = default;
    explicit SelectType(Kind kind) noexcept : kind_(kind) {}
    // "up", "down", "selected", "all" exactly; any other text is a fixed index, 0 if it is no number.
    explicit SelectType(std::string_view text) noexcept;
    // The item with that id, 0-based.
    [[nodiscard]] static SelectType fixed(std::int32_t index) noexcept;

    [[nodiscard]] Kind getKind() const noexcept { return kind_; }
    // Of kind fixed only; else 0.
    [[nodiscard]] std::int32_t getIndex() const noexcept { return index_; }

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const SelectType& a, const SelectType& b) noexcept {
        return a.kind_ == b.kind_ && a.index_ == b.index_;
    }

private:
    Kind kind_ = Kind::selected;
    std::int32_t index_ = 0;
};
