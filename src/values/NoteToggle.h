// How a layer treats a key that is pressed again: "off", "type1" or "type2".
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class NoteToggle final : public XmlItem {
public:
    enum class State : std::int32_t { off = 0, type1 = 1, type2 = 2 };

    NoteToggle() = default;
    explicit NoteToggle(State state) noexcept : state_(state) {}
    // A layer's text, in whatever case; any other text is off.
    explicit NoteToggle(std::string_view text) noexcept;
    // The text of a function or translation, which deliberately counts only in lower case.
    [[nodiscard]] static NoteToggle fromExactText(std::string_view text) noexcept;

    [[nodiscard]] State getState() const noexcept { return state_; }
    [[nodiscard]] bool isOff() const noexcept { return state_ == State::off; }
    [[nodiscard]] bool isType1() const noexcept { return state_ == State::type1; }
    [[nodiscard]] bool isType2() const noexcept { return state_ == State::type2; }

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const NoteToggle& a, const NoteToggle& b) noexcept { return a.state_ == b.state_; }

private:
    State state_ = State::off;
};
