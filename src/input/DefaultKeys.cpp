#include "input/DefaultKeys.h"

#include "values/Note.h"

#include <array>
#include <cassert>
#include <string>
#include <string_view>

namespace Backend::ComputerInput {

namespace {

// Each row chromatically upward from its first note. The keys between E and F and between B and C are left out.
constexpr std::array upperRow{"Q",      "2",
                              "W",      "3",
                              "E",      "R",
                              "5",      "T",
                              "6",      "Y",
                              "7",      "U",
                              "I",      "9",
                              "O",      "0",
                              "P",      "Left Bracket",
                              "Equals", "Right Bracket"};
constexpr std::array lowerRow{"Z", "S", "X", "D",     "C", "V",      "G",         "B",    "H",
                              "N", "J", "M", "Comma", "L", "Period", "Semicolon", "Slash"};
constexpr int upperFirstNote = 60;
constexpr int lowerFirstNote = 48;

struct PlainKey {
    std::string_view id;
    bool keepSending;
    std::string_view down; // elements of functions; empty: none
    std::string_view up;
};

// clang-format off
constexpr std::array plainKeys = std::to_array<PlainKey>({
    {"Numpad 2", false, R"(<MidiPitchBend value="16383"/>)", R"(<MidiPitchBend value="8192"/>)"},
    {"Space", false, R"(<MidiControllerChange controller="1" value="127"/>)", R"(<MidiControllerChange controller="1" value="0"/>)"},
    {"Numpad 7", false, R"(<MidiControllerChange controller="1" value="127"/>)", ""},
    {"Numpad 4", false, R"(<MidiControllerChange controller="1" value="0"/>)", ""},
    {"Numpad 8", false, R"(<MidiControllerChange controller="64" value="127"/>)", ""},
    {"Numpad 5", false, R"(<MidiControllerChange controller="64" value="0"/>)", ""},

    {"F1", false, R"(<ChangeZoneTranspose type="selected" value="-12"/>)", ""},
    {"F2", false, R"(<ChangeZoneTranspose type="selected" value="+12"/>)", ""},
    {"Shift F1", false, R"(<ChangeZoneTranspose type="selected" value="-1"/>)", ""},
    {"Shift F2", false, R"(<ChangeZoneTranspose type="selected" value="+1"/>)", ""},
    {"F3", false, R"(<SelectZone type="down"/>)", ""},
    {"F4", false, R"(<SelectZone type="up"/>)", ""},

    {"Left", true, R"(<SelectControl type="left"/>)", ""},
    {"Right", true, R"(<SelectControl type="right"/>)", ""},
    {"Up", true, R"(<SelectControl type="up"/>)", ""},
    {"Down", true, R"(<SelectControl type="down"/>)", ""},
    {"Page Up", true, R"(<ChangeControl type="selected" value="+1"/>)", ""},
    {"Page Down", true, R"(<ChangeControl type="selected" value="-1"/>)", ""},
    {"Home", true, R"(<ChangeControl type="selected" value="+10"/>)", ""},
    {"End", true, R"(<ChangeControl type="selected" value="-10"/>)", ""},
    {"Insert", false, R"(<ChangeControl type="selected" value="127"/>)", ""},
    {"Delete", false, R"(<ChangeControl type="selected" value="0"/>)", ""},
    {"Control Delete", false, R"(<ChangeControl type="selected" value="64"/>)", ""},
    {"Backspace", false, R"(<ChangeControl type="selected" value="127"/>)", R"(<ChangeControl type="selected" value="0"/>)"},

    {"Control Left", true, R"(<MoveWindow x="-10" y=""/>)", ""},
    {"Control Right", true, R"(<MoveWindow x="+10" y=""/>)", ""},
    {"Control Up", true, R"(<MoveWindow x="" y="-10"/>)", ""},
    {"Control Down", true, R"(<MoveWindow x="" y="+10"/>)", ""},
    {"", false, R"(<MoveWindow x="" y=""/>)", ""}, // deliberately a key that is never pressed

    {"Numpad -", false, "<ResetQel/>", ""},
    {"Numpad Enter", false, "", R"(<ShowZone type="toggle"/>)"},
    {"Numpad *", false, "", R"(<ShowDisplay type="toggle"/>)"},
    {"Numpad .", false, "", R"(<ShowOutput type="toggle"/>)"},
    {"Numpad 9", false, "", R"(<ShowMidiInput type="toggle"/>)"},
});
// clang-format on

// In the upper row, without a note: they do nothing, and keep their places in the map for the user.
constexpr std::array bareKeys{"1", "4", "8", "Minus"};

std::string holder(std::string_view name, std::string_view function) {
    return function.empty() ? std::string()
                            : "<" + std::string(name) + ">" + std::string(function) + "</" + std::string(name) + ">";
}

std::string keyText(std::string_view id, bool keepSending, std::string_view down, std::string_view up) {
    return "<Key id=\"" + std::string(id) + "\" global=\"true\"><Function keepSending=\"" +
           (keepSending ? "true" : "false") + "\">" + holder("Down", down) + holder("Up", up) + "</Function></Key>\n";
}

std::string noteText(std::string_view keyword, int zone, int note) {
    return "<" + std::string(keyword) + " zone=\"" + std::to_string(zone) + "\" note=\"" + Note(note).getName() +
           "\" velocity=\"100\"/>";
}

template <typename Row> std::string rowText(const Row& row, int zone, int note) {
    std::string text;
    for (const std::string_view key : row) {
        text += keyText(key, false, noteText("MidiNoteOn", zone, note), noteText("MidiNoteOff", zone, note));
        ++note;
    }
    return text;
}

std::string sectionText() {
    std::string text = "<ComputerInput merge=\"false\" useKeyUpMod=\"false\">\n";
    text += rowText(upperRow, 0, upperFirstNote) + rowText(lowerRow, 1, lowerFirstNote);
    for (const std::string_view key : bareKeys) {
        text += "<Key id=\"" + std::string(key) + "\" global=\"true\"></Key>\n";
    }
    for (const PlainKey& key : plainKeys) {
        text += keyText(key.id, key.keepSending, key.down, key.up);
    }
    return text + "</ComputerInput>\n";
}

} // namespace

const Platform::XmlElement& defaultComputerInput() {
    static const Platform::XmlElement section = [] {
        Platform::Result<Platform::XmlElement> parsed = Platform::parseXml(sectionText(), "default keyboard");
        assert(parsed);
        return std::move(parsed.value());
    }();
    return section;
}

} // namespace Backend::ComputerInput
