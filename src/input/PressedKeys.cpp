#include "input/PressedKeys.h"

#include <algorithm>
#include <utility>

namespace Backend::ComputerInput {

using FunctionManagement::Function;

namespace {

bool namesItsWay(const MidiEventIdentity& note) {
    constexpr std::uint8_t defaultOutput = 255;
    return note.channel >= 0 || note.output != defaultOutput;
}

bool endsItsNote(const FunctionEntry& entry) {
    if (!entry.down || !entry.up) {
        return false;
    }
    const MidiEventIdentity down = entry.down->getMidiEvent();
    const MidiEventIdentity up = entry.up->getMidiEvent();
    return down.isNoteOn() && up.isNoteOff() && up.isSamePlace(down);
}

} // namespace

PressedKeys::OwedNote* PressedKeys::Press::find(const MidiEventIdentity& noteOff) {
    const auto found = std::find_if(owed.begin(), owed.end(),
                                    [&](const OwedNote& note) { return note.noteOff->getMidiEvent() == noteOff; });
    return found == owed.end() ? nullptr : &*found;
}

PressedKeys::OwedNote& PressedKeys::Press::findOrAdd(const std::shared_ptr<const Function>& noteOff) {
    OwedNote* const known = find(noteOff->getMidiEvent());
    return known != nullptr ? *known : owed.emplace_back(OwedNote{noteOff});
}

void PressedKeys::down(const Key& key, bool repeat, const Map& current) {
    Press& press = presses_.try_emplace(key.getCode(), Press{current, {}, {}}).first->second;
    const bool again = repeat || press.modifiers[key.getModifiers()];
    press.modifiers.set(key.getModifiers());
    const Map map = press.map; // lives while its functions are executed
    if (const KeyConfiguration* configuration = map->find(key)) {
        for (const FunctionEntry& entry : configuration->entries) {
            if (entry.down && (!again || entry.keepSending)) {
                begin(entry, press);
            }
        }
    }
}

void PressedKeys::begin(const FunctionEntry& entry, Press& press) {
    if (endsItsNote(entry)) {
        ++press.findOrAdd(entry.up).times;
    }
    entry.down->execute();
}

void PressedKeys::up(const Key& key, const Map& current) {
    Press press{current, {}, {}};
    if (auto node = presses_.extract(key.getCode())) {
        press = std::move(node.mapped());
        handOn(press);
    }
    if (const KeyConfiguration* configuration =
            press.map->find(press.map->useKeyUpMod ? key : key.withoutModifiers())) {
        for (const FunctionEntry& entry : configuration->entries) {
            if (entry.up) {
                end(*entry.up, press);
            }
        }
    }
    for (const OwedNote& note : press.owed) {
        for (int i = 0; i < note.times; ++i) {
            note.noteOff->execute();
        }
    }
}

void PressedKeys::handOn(Press& press) {
    for (OwedNote& note : press.owed) {
        const MidiEventIdentity noteOff = note.noteOff->getMidiEvent();
        for (auto& [code, other] : presses_) {
            OwedNote* const theirs = namesItsWay(noteOff) ? other.find(noteOff) : nullptr;
            if (theirs != nullptr && theirs->times > 0) {
                theirs->times += std::exchange(note.times, 0);
                note.handedOn = true;
                break;
            }
        }
    }
}

void PressedKeys::end(const Function& up, Press& press) {
    if (OwedNote* const note = press.find(up.getMidiEvent())) {
        if (note->handedOn) {
            return;
        }
        note->times = std::max(note->times - 1, 0);
    }
    up.execute();
}

} // namespace Backend::ComputerInput
