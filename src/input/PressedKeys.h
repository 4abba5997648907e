// The keys that are down now, and what is owed for each when it comes up.
#pragma once

#include "input/KeyConfigurationMap.h"

#include <bitset>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Backend::ComputerInput {

// A physical key is down once, with whatever modifiers; from its first down to its up it belongs to the map of that
// first down: its repeats and its up are looked up there, whatever the keyboard's map is by then. So a change of map
// or program cannot part a note from its end.
//
// Down: looked up with its modifiers. A key that goes down again with the same modifiers repeats, as the system's own
// repeats do: only entries that keep sending are executed.
//
// Up: the up functions that run are those of the key without modifiers, or, with useKeyUpMod, of the key with the
// modifiers of the release. Where they leave a note on that the key has begun, its Note Off runs as well: the note of
// "Shift Q" ends although the up functions of "Q" run. An up of a key that is not down runs the up functions of the
// current map.
//
// A note of an entry that keeps sending began more than once; its Note Off is executed as often. Of a note that names
// its channel or output, which no layer counts, and that another key holds too, the Note Off waits for that key.
//
// [backend]
class PressedKeys final {
public:
    using Map = std::shared_ptr<const KeyConfigurationMap>;

    // `repeat`: the system says that the key has been down.
    void down(const Key& key, bool repeat, const Map& current);
    void up(const Key& key, const Map& current);

    [[nodiscard]] std::size_t count() const { return presses_.size(); }

private:
    // A note that has begun and whose entry also ends it.
    struct OwedNote {
        std::shared_ptr<const FunctionManagement::Function> noteOff;
        int times = 0;         // how often it is still to be executed
        bool handedOn = false; // now another key's
    };
    struct Press {
        Map map;
        std::bitset<16> modifiers; // with which it went down
        std::vector<OwedNote> owed;

        OwedNote* find(const MidiEventIdentity& noteOff);
        OwedNote& findOrAdd(const std::shared_ptr<const FunctionManagement::Function>& noteOff);
    };

    static void begin(const FunctionEntry& entry, Press& press);
    void handOn(Press& press);
    static void end(const FunctionManagement::Function& up, Press& press);

    std::unordered_map<std::uint32_t, Press> presses_; // by the code of the key
};

} // namespace Backend::ComputerInput
