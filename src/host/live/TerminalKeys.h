// From the bytes of a terminal to the keys that are played.
#pragma once

#include "host/live/DownKeys.h"
#include "host/live/KeyPressGuess.h"
#include "host/live/TerminalKeyParser.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace Host {

// Exact where the terminal tells when keys come up, else guessed. Begins guessing, and changes over when the terminal
// has answered to `question` and has taken `request`. Knows nothing of any device.
class TerminalKeys final {
public:
    using Time = std::chrono::milliseconds;

    // Which parts of the kitty keyboard protocol are on? Other terminals pass over it.
    static constexpr std::string_view question = "\x1b[?u";
    // Keeps the terminal's way on its stack and asks for: told apart from characters (1), with event types (2), the
    // key's place (4), all keys (8). Asks again what is on.
    static constexpr std::string_view request = "\x1b[>15u\x1b[?u";
    // Gives the terminal its way back.
    static constexpr std::string_view farewell = "\x1b[<u";

    struct Result {
        std::vector<KeyEvent> keys; // every key that goes down comes up
        bool request = false;       // the terminal is to be sent `request`, once
        bool end = false;           // Control C
        bool suspend = false;       // Control Z
    };
    // Control C and Control Z are not keys.
    [[nodiscard]] Result take(std::span<const std::uint8_t> bytes, Time now);
    [[nodiscard]] Result passTime(Time now);
    // Every key comes up; what has come of a sequence is still waited for.
    [[nodiscard]] Result liftAll();

    // When passTime() next has something to do.
    [[nodiscard]] std::optional<Time> deadline() const;

private:
    void handle(const TerminalKeyParser::Inputs& inputs, Time now, Result& result);
    void handle(const KeyTyped& typed, Time now, Result& result);
    void handle(const KeyEvent& event, Time now, Result& result);
    void handle(const FocusLost& lost, Time now, Result& result);
    void handle(const KeyboardFlags& answer, Time now, Result& result);
    void admit(const std::vector<KeyEvent>& events, Result& result);

    TerminalKeyParser parser_;
    KeyPressGuess guess_;
    DownKeys down_;
    bool hasRequested_ = false;
};

} // namespace Host
