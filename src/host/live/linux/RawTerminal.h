// The terminal at standard input, for a program that wants each key.
#pragma once

#include "platform/Result.h"

#include <string_view>

namespace Host {

// While it lives, characters come at once and without echo, also pastes are marked, the numpad is told apart and the
// loss of the keyboard's focus is reported. However the program ends, but for SIGKILL, the terminal is as it was
// before: also signals that are errors see to that before they do their work. One at a time; all but the static
// functions on one thread.
class RawTerminal final {
public:
    RawTerminal();
    // What has not been read is lost.
    ~RawTerminal();
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

    [[nodiscard]] const Platform::Outcome& state() const noexcept { return state_; }

    // Takes the terminal again, whatever has been done with it meanwhile.
    void enter();
    void leave();
    void write(std::string_view text);
    // Writes `text`, and `farewell` before the terminal is left. Both after each enter(), too. `farewell` has at most
    // 16 bytes.
    void writeWithFarewell(std::string_view text, std::string_view farewell);

private:
    Platform::Outcome state_;
    std::string_view extra_;
};

} // namespace Host
