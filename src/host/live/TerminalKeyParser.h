// What a terminal sends for keys, taken apart.
#pragma once

#include "host/live/KeyEvent.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace Host {

// A key has typed, for the first time or again; of its release nothing is known.
struct KeyTyped {
    Key key;
    friend bool operator==(const KeyTyped&, const KeyTyped&) = default;
};
// The terminal's window is no longer the one that gets the keys: releases go elsewhere.
struct FocusLost {
    friend bool operator==(const FocusLost&, const FocusLost&) = default;
};
// The terminal's answer to being asked which parts of the kitty keyboard protocol are on.
struct KeyboardFlags {
    std::uint32_t flags = 0;
    friend bool operator==(const KeyboardFlags&, const KeyboardFlags&) = default;
};
// A KeyEvent is a key of which each press, repeat and release is told.
using TerminalInput = std::variant<KeyTyped, KeyEvent, FocusLost, KeyboardFlags>;

// Bytes in, keys out: plain characters and control characters, ESC before a character for Alt, CSI and SS3 sequences
// with modifiers, the application keypad, the Linux console's function keys, the kitty keyboard protocol (CSI u with
// alternate keys and event types). A key is taken by its place on a keyboard of the United States where the terminal
// tells the place, else by its character.
//
// Dropped without a word: what is pasted (bracketed), characters beyond ASCII, all other sequences and strings,
// however long or broken.
//
// Time counts from anywhere and never goes back.
class TerminalKeyParser final {
public:
    using Time = std::chrono::milliseconds;
    using Inputs = std::vector<TerminalInput>;

    // After ESC: when nothing follows for so long, it was a key of its own. A sequence that stops is given up.
    static constexpr Time escapeWait{40};
    // A paste that stops without its end is over. So is a sequence of a terminal that sends nothing but sequences.
    static constexpr Time longWait{1000};
    // No sequence that is understood is longer.
    static constexpr std::size_t longestSequence = 64;

    // Whether keys of the kitty protocol are KeyEvents (true) or, where the terminal does not tell releases, KeyTyped.
    void setExact(bool exact) { exact_ = exact; }

    // Each appends what follows from it.
    void feed(std::span<const std::uint8_t> bytes, Time now, Inputs& inputs);
    void passTime(Time now, Inputs& inputs);
    // When passTime() next has something to do.
    [[nodiscard]] std::optional<Time> deadline() const;

private:
    enum class State { ground, escape, csi, consoleKey, ss3, string, stringEscape, paste };

    void feed(std::uint8_t byte, Inputs& inputs);
    void type(std::uint8_t byte, Inputs& inputs);
    void startSequence(std::uint8_t byte, Inputs& inputs);
    void continueCsi(std::uint8_t byte, Inputs& inputs);
    void continueSs3(std::uint8_t byte, Inputs& inputs);
    void continueString(std::uint8_t byte);
    void continuePaste(std::uint8_t byte);
    void endCsi(char final, Inputs& inputs);
    void emit(Key key, std::uint32_t modifierNumber, std::uint32_t eventNumber, Inputs& inputs) const;

    State state_ = State::ground;
    bool alt_ = false;         // ESC stood before the sequence
    std::uint8_t opening_ = 0; // that followed ESC
    std::string sequence_;     // since then; in a paste, the part of its end that has come
    Time last_{};              // byte
    bool exact_ = false;
};

} // namespace Host
