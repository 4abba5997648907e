// Playing from the keyboard of the terminal that is standard input.
#pragma once

#include "platform/Result.h"

#include <memory>

namespace Backend {
class QelIF;
}

namespace Host {

class LivePlayer;

// While it lives, the terminal belongs to it: nothing is echoed, and each key goes to the backend from a thread of its
// own. Control C, and a terminal that has gone, ask the program to end as their signals do (StopSignals); where there
// is Control Z, the program first ends its notes and leaves the terminal as it was. The terminal is as it was again
// also after a crash.
//
// One at a time.
class TerminalKeyboard final {
public:
    // Both outlive the object.
    TerminalKeyboard(Backend::QelIF& qel, const LivePlayer& player);
    // Every key comes up.
    ~TerminalKeyboard();
    TerminalKeyboard(const TerminalKeyboard&) = delete;
    TerminalKeyboard& operator=(const TerminalKeyboard&) = delete;

    // A fault when the terminal cannot be taken: then nothing is played from it.
    [[nodiscard]] const Platform::Outcome& state() const noexcept;

private:
    struct Playing;
    std::unique_ptr<Playing> playing_;
};

} // namespace Host
