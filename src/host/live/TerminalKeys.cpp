#include "host/live/TerminalKeys.h"

#include <algorithm>

namespace Host {

namespace {

constexpr std::uint32_t eventTypes = 2;
constexpr std::uint32_t allKeys = 8;

// Whether the key is not for playing; then it is noted.
bool isCommand(const Key& key, TerminalKeys::Result& result) {
    const bool isC = key == Key('C', Key::CONTROL);
    const bool isZ = key == Key('Z', Key::CONTROL);
    result.end = result.end || isC;
    result.suspend = result.suspend || isZ;
    return isC || isZ;
}

} // namespace

TerminalKeys::Result TerminalKeys::take(std::span<const std::uint8_t> bytes, Time now) {
    Result result;
    TerminalKeyParser::Inputs inputs;
    parser_.feed(bytes, now, inputs);
    handle(inputs, now, result);
    return result;
}

TerminalKeys::Result TerminalKeys::passTime(Time now) {
    Result result;
    TerminalKeyParser::Inputs inputs;
    parser_.passTime(now, inputs);
    handle(inputs, now, result);
    return result;
}

TerminalKeys::Result TerminalKeys::liftAll() {
    Result result;
    handle(FocusLost{}, {}, result);
    return result;
}

std::optional<TerminalKeys::Time> TerminalKeys::deadline() const {
    const auto parsing = parser_.deadline();
    const auto guessing = guess_.deadline();
    return parsing && guessing ? std::min(*parsing, *guessing) : parsing ? parsing : guessing;
}

void TerminalKeys::handle(const TerminalKeyParser::Inputs& inputs, Time now, Result& result) {
    std::vector<KeyEvent> over;
    guess_.passTime(now, over);
    admit(over, result);
    for (const TerminalInput& input : inputs) {
        std::visit([&](const auto& each) { handle(each, now, result); }, input);
    }
}

void TerminalKeys::handle(const KeyTyped& typed, Time now, Result& result) {
    if (!isCommand(typed.key, result)) {
        std::vector<KeyEvent> events;
        guess_.typed(typed.key, now, events);
        admit(events, result);
    }
}

void TerminalKeys::handle(const KeyEvent& event, Time, Result& result) {
    if (event.press == Press::up || !isCommand(event.key, result)) {
        admit({event}, result);
    }
}

void TerminalKeys::handle(const FocusLost&, Time, Result& result) {
    std::vector<KeyEvent> guessed;
    guess_.liftAll(guessed);
    admit(guessed, result);
    const auto lifted = down_.liftAll();
    result.keys.insert(result.keys.end(), lifted.begin(), lifted.end());
}

void TerminalKeys::handle(const KeyboardFlags& answer, Time, Result& result) {
    parser_.setExact((answer.flags & eventTypes) != 0 && (answer.flags & allKeys) != 0);
    result.request = result.request || !hasRequested_;
    hasRequested_ = true;
}

void TerminalKeys::admit(const std::vector<KeyEvent>& events, Result& result) {
    for (const KeyEvent& event : events) {
        if (const auto admitted = down_.admit(event)) {
            result.keys.push_back(*admitted);
        }
    }
}

} // namespace Host
