#include "values/NoteToggle.h"

#include "values/Words.h"

NoteToggle::NoteToggle(std::string_view text) noexcept
    : state_(equalInAnyCase(text, "type1")   ? State::type1
             : equalInAnyCase(text, "type2") ? State::type2
                                             : State::off) {}

NoteToggle NoteToggle::fromExactText(std::string_view text) noexcept {
    return NoteToggle(text == "type1" ? State::type1 : text == "type2" ? State::type2 : State::off);
}

std::string NoteToggle::toXmlString() const {
    switch (state_) {
    case State::type1:
        return "type1";
    case State::type2:
        return "type2";
    case State::off:
        break;
    }
    return "off";
}
