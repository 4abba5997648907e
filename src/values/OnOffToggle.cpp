#include "values/OnOffToggle.h"

OnOffToggle::OnOffToggle(std::string_view text) noexcept
    : state_(text == "on"    ? State::on
             : text == "off" ? State::off
                             : State::toggle) {}

std::string OnOffToggle::toXmlString() const {
    return state_ == State::on ? "on" : state_ == State::off ? "off" : "toggle";
}
