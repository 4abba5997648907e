// On, off, or the other one.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class OnOffToggle final : public XmlItem {
public:
    // The numbers travel in thread messages.
    enum class State : std::int32_t { on = 0, off = 1, toggle = 2 };

    // Toggle.
    OnOffToggle() = default;
    explicit OnOffToggle(State state) noexcept : state_(state) {}
    // Exactly "on" or "off"; any other text is toggle.
    explicit OnOffToggle(std::string_view text) noexcept;

    [[nodiscard]] State getState() const noexcept { return state_; }
    // What a switch that stands at `current` becomes.
    [[nodiscard]] bool applyTo(bool current) const noexcept {
        return state_ == State::toggle ? !current : state_ == State::on;
    }

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const OnOffToggle& a, const OnOffToggle& b) noexcept { return a.state_ == b.state_; }

private:
    State state_ = State::toggle;
};
