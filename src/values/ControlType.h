// The shapes of on-screen controls.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Backend::Controls {

class ControlType final : public XmlItem {
public:
    enum class Kind : std::int32_t { none = 0, edit = 1, vfader = 2, hfader = 3, knob = 4, label = 5 };

    ControlType() = default;
    explicit ControlType(Kind kind) noexcept : kind_(kind) {}
    // Trimmed, then exactly "edit", "vfader", "hfader", "knob" or "label"; any other text is none.
    explicit ControlType(std::string_view text) noexcept;

    [[nodiscard]] Kind getKind() const noexcept { return kind_; }
    // Neither none nor a label.
    [[nodiscard]] bool sends() const noexcept { return kind_ != Kind::none && kind_ != Kind::label; }

    // Empty for none.
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const ControlType& a, const ControlType& b) noexcept { return a.kind_ == b.kind_; }

private:
    Kind kind_ = Kind::none;
};

} // namespace Backend::Controls
