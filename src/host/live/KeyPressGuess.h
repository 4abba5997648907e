// How long a key is down when all that is known is each time that it types.
#pragma once

#include "host/live/KeyEvent.h"

#include <chrono>
#include <optional>
#include <vector>

namespace Host {

// A key that is held types again and again; so it is down from the first time until shortly after the last. Only the
// key that went down last repeats: one that went down before it ends when its own time is over. Keys of one chord stay
// down together.
//
// A keyboard always waits the same time before it first repeats. Until a held key has shown it, whatever is typed again
// within firstWait is taken for a repeat; from then on what comes at another time is a new press.
//
// Time counts from anywhere and never goes back.
class KeyPressGuess final {
public:
    using Time = std::chrono::milliseconds;

    // Longer than keyboards wait before the first repeat, which is 250 to 600.
    static constexpr Time firstWait{700};
    // Longer than between two repeats, which is 30 to 100.
    static constexpr Time nextWait{130};
    // Keys that go down within this time of each other are a chord.
    static constexpr Time chordSpread{60};
    // What a first repeat may be early or late, once the keyboard's delay is known.
    static constexpr Time jitter{50};
    // No keyboard waits less.
    static constexpr Time shortestDelay{200};

    using Events = std::vector<KeyEvent>;

    // Each appends what follows from it. A key that comes back with other modifiers has come up and goes down anew.
    // Function keys, arrows and the keys above them are tapped rather than held: they wait nextWait for any repeat, so
    // that each of two quick taps counts.
    void typed(const Key& key, Time now, Events& events);
    void passTime(Time now, Events& events);
    void liftAll(Events& events);

    // When passTime() next has something to do; nothing while no key is down.
    [[nodiscard]] std::optional<Time> deadline() const;

private:
    struct Held {
        Key key;
        Time since{};
        Time last{};  // typed
        Time until{}; // it comes up then
        Time firstGap{};
        int repeats = 0;
        int chord = 0;
    };
    [[nodiscard]] Time waitOf(const Key& key) const;
    [[nodiscard]] bool isRepeat(const Held& held, Time now) const;
    void repeat(Held& held, Time now);

    std::vector<Held> held_; // in the order in which they went down
    int chord_ = 0;
    std::optional<Time> delay_; // of the keyboard
};

} // namespace Host
