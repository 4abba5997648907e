#include "RandomPlay.h"

#include <algorithm>
#include <array>

namespace Soak {

namespace {

using namespace Host;

constexpr auto keyNames = std::to_array<const char*>(
    {"Q",  "2",  "W",    "3",    "E",     "R",       "5",         "T",        "6",        "Y",      "Z",
     "S",  "X",  "D",    "C",    "V",     "G",       "B",         "Space",    "F1",       "F2",     "F3",
     "F4", "Up", "Down", "Left", "Right", "Page Up", "Page Down", "Numpad 7", "Numpad 4", "Escape", "Tab"});

constexpr auto onOffActions =
    std::to_array<const char*>({"ChangeLayerMute", "ChangeLayerMono", "ChangeLayerSolo", "ChangeOscPlaying"});
constexpr auto numberActions = std::to_array<const char*>(
    {"ChangeLayerTranspose", "ChangeLayerVelocity", "ChangeZoneTranspose", "ChangeOscSpeed"});
constexpr auto selectActions = std::to_array<const char*>(
    {"ChangeProgram", "SelectZone", "DataSelectLayer", "EditSelectLayer", "DataSelectOsc", "ChangeDefaultMidiOutput"});
constexpr auto controlActions = std::to_array<const char*>({"SelectControl", "SetWidgetFocus", "SendControlData"});

constexpr auto noteOn = static_cast<std::uint8_t>(0x90);
constexpr auto noteOff = static_cast<std::uint8_t>(0x80);

std::string element(const std::string& name, const std::string& attributes) {
    return "<" + name + " " + attributes + "/>";
}

} // namespace

RandomPlay::RandomPlay(std::uint64_t seed, int inputs, std::vector<std::string> presets)
    : random_(seed), inputs_(inputs), presets_(std::move(presets)) {}

std::vector<PerformanceEvent> RandomPlay::minute(std::int32_t start) {
    std::vector<PerformanceEvent> events;
    std::exponential_distribution<double> gap(1.0 / number(10, 200));
    const std::int32_t end = start + ticksPlayed;
    for (double tick = start; tick < end; tick += gap(random_)) {
        events.push_back(anything(static_cast<std::int32_t>(tick)));
        if (chance(1)) { // a handful at once
            for (int more = number(1, 40); more > 0; --more) {
                events.push_back(anything(static_cast<std::int32_t>(tick)));
            }
        }
    }
    if (chance(30)) {
        addClock(start, end, events);
    }
    letGo(end, events);
    return events;
}

// MIDI clock of a source that hesitates, beside all else on the last input.
void RandomPlay::addClock(std::int32_t start, std::int32_t end, std::vector<PerformanceEvent>& events) {
    const int interval = number(4, 60); // ticks between clocks
    const int jitter = number(0, interval);
    const auto port = static_cast<std::uint8_t>(inputs_ - 1);
    for (std::int32_t tick = start; tick < end; tick += interval) {
        events.push_back({std::min(end, tick + number(0, jitter)), MidiArrives{port, 0xF8, 0, 0}});
    }
    std::stable_sort(events.begin(), events.end(), [](const auto& a, const auto& b) { return a.tick < b.tick; });
}

PerformanceEvent RandomPlay::anything(std::int32_t tick) {
    const int kind = number(0, 99);
    if (kind < 45) {
        return {tick, incoming()};
    }
    if (kind < 70) {
        return {tick, key()};
    }
    if (kind < 76) {
        return {tick, ControlMoves{{number(0, 3), number(0, 9)}, number(-10, 20000)}};
    }
    if (kind < 80) {
        return {tick, AxisMoves{static_cast<std::uint8_t>(number(0, 1)), static_cast<std::uint8_t>(number(0, 5)),
                                static_cast<std::uint16_t>(number(0, 65535))}};
    }
    if (kind < 84) {
        return {tick, button()};
    }
    if (kind < 85) {
        return {tick, SetTempo{number(10, 500)}};
    }
    if (kind < 86 && chance(20)) {
        return {tick, ResetAll{}};
    }
    if (kind < 90) {
        return {tick, ExecuteTranslation{incoming(), translation()}};
    }
    return {tick, ExecuteFunction{function()}};
}

MidiArrives RandomPlay::incoming() {
    const auto port = static_cast<std::uint8_t>(number(0, inputs_ - 1));
    const auto channel = static_cast<std::uint8_t>(chance(70) ? 0 : number(0, 15));
    const auto data = [this] { return static_cast<std::uint8_t>(number(0, 127)); };
    if (const int kind = number(0, 9); kind < 4) {
        const auto note = static_cast<std::uint8_t>(number(36, 84));
        notes_.insert({{port, static_cast<std::uint8_t>(noteOn | channel)}, note});
        return {port, static_cast<std::uint8_t>(noteOn | channel), note, static_cast<std::uint8_t>(number(1, 127))};
    } else if (kind < 8 && !notes_.empty()) {
        const auto held = std::next(notes_.begin(), number(0, static_cast<int>(notes_.size()) - 1));
        const auto [place, note] = *held;
        notes_.erase(held);
        const bool running = chance(50); // a Note On without velocity ends a note as well
        return {place.first, static_cast<std::uint8_t>(running ? place.second : place.second ^ noteOn ^ noteOff), note,
                static_cast<std::uint8_t>(running ? 0 : number(0, 127))};
    }
    constexpr auto others = std::to_array<std::uint8_t>(
        {0xA0, 0xB0, 0xB0, 0xB0, 0xC0, 0xD0, 0xE0, 0xF1, 0xF2, 0xF3, 0xF6, 0xF8, 0xF9, 0xFA, 0xFB, 0xFC, 0xFD, 0xFE});
    const std::uint8_t status = oneOf(others);
    return {port, static_cast<std::uint8_t>(status < 0xF0 ? status | channel : status), data(), data()};
}

KeyMoves RandomPlay::key() {
    if (!keys_.empty() && chance(50)) {
        const auto held = std::next(keys_.begin(), number(0, static_cast<int>(keys_.size()) - 1));
        const std::string name = *held;
        if (chance(30)) {
            return {Press::repeat, name};
        }
        keys_.erase(held);
        return {Press::up, name};
    }
    const std::string name = oneOf(keyNames);
    keys_.insert(name);
    return {Press::down, name};
}

ButtonMoves RandomPlay::button() {
    if (!buttons_.empty() && chance(50)) {
        const auto [joystick, number] = *buttons_.begin();
        if (chance(30)) {
            return {Press::repeat, joystick, number};
        }
        buttons_.erase(buttons_.begin());
        return {Press::up, joystick, number};
    }
    const std::pair button{static_cast<std::uint8_t>(number(0, 1)), static_cast<std::uint8_t>(number(0, 31))};
    buttons_.insert(button);
    return {Press::down, button.first, button.second};
}

std::string RandomPlay::selection(int highest) {
    constexpr auto words = std::to_array<const char*>({"up", "down", "selected", "all"});
    return chance(50) ? std::string(oneOf(words)) : std::to_string(number(0, highest));
}

std::string RandomPlay::relative(int lowest, int highest) {
    const int value = number(lowest, highest);
    return chance(50) || value < 0 ? std::to_string(value) : "+" + std::to_string(value);
}

std::string RandomPlay::function() {
    constexpr auto onOff = std::to_array<const char*>({"on", "off", "toggle"});
    constexpr auto toggles = std::to_array<const char*>({"off", "type1", "type2"});
    switch (number(0, 9)) {
    case 0:
    case 1:
        return element(oneOf(numberActions), "type='" + selection(9) + "' value='" + relative(-24, 24) + "'");
    case 2:
        return element(oneOf(onOffActions), "type='" + selection(9) + "' value='" + oneOf(onOff) + "'");
    case 3:
        return element("ChangeLayerNoteToggle", "type='" + selection(9) + "' value='" + oneOf(toggles) + "'");
    case 4:
        return element(oneOf(selectActions), "type='" + selection(40) + "'");
    case 5:
        return element(oneOf(controlActions), "type='" + std::string(chance(50) ? "right" : "down") + "'");
    case 6:
        return element("ChangeTempo", "value='" + relative(-20, 240) + "'");
    case 7:
        return chance(20) ? element("ChangeMidiThru", std::string("value='") + oneOf(onOff) + "'")
                          : element("ChangeControl", "type='all' value='" + relative(-5, 5) + "'");
    case 8:
        return presets_.empty() ? "<ResetQel/>" : oneOf(presets_);
    default:
        return element("MidiControllerChange", "controller='" + std::to_string(number(0, 127)) + "' value='" +
                                                   std::to_string(number(0, 127)) + "'");
    }
}

std::string RandomPlay::translation() {
    constexpr auto some =
        std::to_array<const char*>({"<Translation><ChangeTempo value='D2'/></Translation>",
                                    "<Translation><ChangeProgram type='D1'/></Translation>",
                                    "<Translation><MidiControllerChange controller='7' value='D2'/></Translation>",
                                    "<Translation><ChangeLayerTranspose type='all' value='D1'/></Translation>"});
    return oneOf(some);
}

void RandomPlay::letGo(std::int32_t tick, std::vector<PerformanceEvent>& events) {
    for (const auto& [place, note] : notes_) {
        events.push_back(
            {tick, MidiArrives{place.first, static_cast<std::uint8_t>(place.second ^ noteOn ^ noteOff), note, 0}});
    }
    for (const std::string& name : keys_) {
        events.push_back({tick, KeyMoves{Press::up, name}});
    }
    for (const auto& [joystick, button] : buttons_) {
        events.push_back({tick, ButtonMoves{Press::up, joystick, button}});
    }
    notes_.clear();
    keys_.clear();
    buttons_.clear();
}

} // namespace Soak
