#include "backend/Version2Line.h"

#include "backend/ProgramXml.h"
#include "backend/SequenceNumbers.h"
#include "platform/Utf8.h"
#include "platform/XmlCharacters.h"
#include "values/TextNumbers.h"

#include <algorithm>
#include <optional>

namespace Backend {

using Platform::Fault;
using Platform::Outcome;
using Platform::XmlElement;

namespace {

// The attributes of an element, in the order of the fields; an empty name passes a field over.
using Names = std::vector<std::string_view>;

struct Row {
    char kind;
    std::string_view section;
    std::string_view element;
    Names attributes;
    std::size_t mostFields;
};

const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {'O',
         "Oscillators",
         "Oscillator",
         {"type", "speed", "min", "max", "speedMode", "midiMessage", "output", "channel", "zone"},
         9},
        {'A', "Joystick", "Axis", {"joystick", "axis"}, 8},
        {'B', "Joystick", "Button", {"joystick", "button"}, 5},
        {'K', "ComputerInput", "Key", {"id", "global"}, 5},
        {'E', "MidiInput", "MidiEvent", {"input", "channel", "midiEvent"}, 5},
        {'C', "Controls", "Control", {"", "", "type", "name", "value", "min", "max", "release"}, 12},
        {'L',
         "Layers",
         "Layer",
         {"channel", "output", "zone", "minNote", "maxNote", "minVelocity", "maxVelocity", "transpose", "velocity",
          "mute", "mono", "toggle"},
         14},
        {'Z', "Zones", "Zone", {"id", "transpose"}, 2},
    };
    return all;
}

const Row* rowOf(char kind) {
    const auto found = std::find_if(rows().begin(), rows().end(), [kind](const Row& row) { return row.kind == kind; });
    return found == rows().end() ? nullptr : &*found;
}

std::string asUtf8(std::string_view line) {
    if (Platform::isUtf8(line)) {
        return Platform::asXmlText(line);
    }
    std::string text;
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return Platform::asXmlText(text);
}

void set(XmlElement& element, std::string_view name, std::string_view value) {
    if (!name.empty() && !value.empty()) {
        element.attributes.push_back({std::string(name), std::string(value)});
    }
}

XmlElement elementOf(std::string_view name, int line) {
    XmlElement element;
    element.name = name;
    element.line = line;
    return element;
}

// "MidiNoteOn note=C4 velocity=100"; a value with blanks stands in double quotes. Nothing for what is none.
std::optional<XmlElement> actionOf(std::string_view text, int line) {
    const std::size_t nameEnd = std::min(text.find(' '), text.size());
    XmlElement action = elementOf(text.substr(0, nameEnd), line);
    text = trimmed(text.substr(nameEnd));
    while (!text.empty()) {
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view name = text.substr(0, equals);
        text.remove_prefix(equals + 1);
        const bool isQuoted = text.starts_with('"');
        text.remove_prefix(isQuoted ? 1 : 0);
        const std::size_t end = text.find(isQuoted ? '"' : ' ');
        if (isQuoted && end == std::string_view::npos) {
            return std::nullopt;
        }
        if (action.attribute(name) != nullptr) {
            return std::nullopt;
        }
        action.attributes.push_back({std::string(name), std::string(text.substr(0, end))});
        text = end == std::string_view::npos ? std::string_view() : trimmed(text.substr(end + 1));
    }
    return action;
}

// Into `parent`, within an element of the holder's name where there is one. False for what is no action.
bool addAction(XmlElement& parent, std::string_view holder, std::string_view text, int line) {
    if (text.empty()) {
        return true;
    }
    std::optional<XmlElement> action = actionOf(text, line);
    if (action && !holder.empty()) {
        XmlElement held = elementOf(holder, line);
        held.children.push_back(std::move(*action));
        action = std::move(held);
    }
    if (action) {
        parent.children.push_back(std::move(*action));
    }
    return action.has_value();
}

bool addEntry(XmlElement& element, const Version2Line& line, std::size_t first) {
    XmlElement entry = elementOf("Function", line.number);
    set(entry, "keepSending", line.field(first));
    const bool isUnderstood = addAction(entry, "Down", line.field(first + 1), line.number) &&
                              addAction(entry, "Up", line.field(first + 2), line.number);
    if (!entry.children.empty()) {
        element.children.push_back(std::move(entry));
    }
    return isUnderstood;
}

void addEvent(XmlElement& element, const Version2Line& line, std::size_t first, const Names& names) {
    XmlElement event = elementOf("Function", line.number);
    for (const std::string_view name : names) {
        set(event, name, line.field(first++));
    }
    element.children.push_back(std::move(event));
}

// The sequence of a layer: its number, and how it is applied. False for a number without meaning.
bool addSequence(XmlElement& element, const Version2Line& line, std::size_t first) {
    using namespace SequenceManagement;
    if (line.field(first).empty()) {
        return true;
    }
    const auto number = readDecimal(line.field(first));
    const auto name = number && isDecimal(line.field(first)) ? sequenceName(*number) : std::nullopt;
    if (name && !name->empty()) {
        const SequenceSetting setting = numberedSetting(*name, readDecimal(line.field(first + 1)).value_or(0));
        XmlElement sequence = elementOf("SequenceSetting", line.number);
        set(sequence, "preset", setting.preset);
        set(sequence, "useNote", setting.useNote ? "true" : "false");
        set(sequence, "useVelocity", setting.useVelocity ? "true" : "false");
        element.children.push_back(std::move(sequence));
    }
    return name.has_value();
}

// Puts what stands below the element of a line into it. Null, or what is wrong.
const char* addContent(XmlElement& element, const Version2Line& line) {
    constexpr const char* noAction = "an action that is not understood";
    switch (line.kind) {
    case 'A':
        addEvent(element, line, 2, {"midiEvent", "min", "max", "offset", "channel", "zone"});
        return nullptr;
    case 'B':
    case 'K':
        return addEntry(element, line, 2) ? nullptr : noAction;
    case 'C':
        element.attributes.insert(element.attributes.begin(),
                                  {"cell", std::string(line.field(0)) + "," + std::string(line.field(1))});
        if (!line.field(8).empty()) {
            addEvent(element, line, 8, {"midiEvent", "output", "channel", "zone"});
        }
        return nullptr;
    case 'E': {
        XmlElement translation = elementOf("Translation", line.number);
        set(translation, "condition", line.field(3));
        if (!addAction(translation, "", line.field(4), line.number)) {
            return noAction;
        }
        element.children.push_back(std::move(translation));
        return nullptr;
    }
    case 'L':
        return addSequence(element, line, 12) ? nullptr : "a number that no sequence has";
    default:
        return nullptr;
    }
}

// A further line of the same key, control, axis, button or event adds to the first.
void addOrJoin(XmlElement& section, XmlElement element, const ElementFormat& format) {
    const auto isSame = [&](const XmlElement& other) {
        return other.name == element.name && std::all_of(format.id.begin(), format.id.end(), [&](std::string_view id) {
                   const std::string* const a = other.attribute(id);
                   const std::string* const b = element.attribute(id);
                   return a == nullptr || b == nullptr ? a == b : *a == *b;
               });
    };
    const auto same = format.id.empty() ? section.children.end()
                                        : std::find_if(section.children.begin(), section.children.end(), isSame);
    if (same == section.children.end()) {
        section.children.push_back(std::move(element));
    } else {
        std::move(element.children.begin(), element.children.end(), std::back_inserter(same->children));
    }
}

} // namespace

std::string_view Version2Line::field(std::size_t place) const {
    return place < fields.size() ? std::string_view(fields[place]) : std::string_view();
}

std::vector<Version2Line> version2Lines(std::string_view text) {
    std::vector<Version2Line> lines;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        const std::string line = asUtf8(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        std::string_view rest = line;
        rest = rest.ends_with('\r') ? rest.substr(0, rest.size() - 1) : rest;
        if (trimmed(rest).empty() || rest.front() == ';') {
            continue;
        }
        Version2Line cut{number, rest.front(), {}};
        const bool isLetter = rest.size() == 1 || rest[1] == '\t';
        cut.kind = isLetter ? cut.kind : '?';
        for (rest.remove_prefix(isLetter ? 1 : 0); rest.starts_with('\t');) {
            rest.remove_prefix(1);
            cut.fields.emplace_back(trimmed(rest.substr(0, rest.find('\t'))));
            rest.remove_prefix(std::min(rest.find('\t'), rest.size()));
        }
        lines.push_back(std::move(cut));
    }
    return lines;
}

std::string_view sectionOfLine(char kind) {
    const Row* const row = rowOf(kind);
    return row != nullptr ? row->section : std::string_view();
}

Outcome addLine(const Version2Line& line, XmlElement& section) {
    const Row* const row = rowOf(line.kind);
    if (row == nullptr || row->section != section.name) {
        return Fault{{}, line.number, "a line of this kind does not belong here"};
    }
    if (line.fields.size() > row->mostFields) {
        return Fault{{}, line.number, "there are more than " + std::to_string(row->mostFields) + " fields"};
    }
    XmlElement element = elementOf(row->element, line.number);
    for (std::size_t place = 0; place < row->attributes.size(); ++place) {
        set(element, row->attributes[place], line.field(place));
    }
    if (const char* const wrong = addContent(element, line)) {
        return Fault{{}, line.number, wrong};
    }
    const ElementFormat& format = programFormat().child(section.name);
    if (!format.unchecked) {
        std::vector<Fault> faults;
        checkElement(element, format.child(row->element), {}, faults);
        if (!faults.empty()) {
            return faults.front();
        }
    }
    addOrJoin(section, std::move(element), format.unchecked ? ElementFormat{} : format.child(row->element));
    return Platform::success();
}

void convertControls(XmlElement& section) {
    for (XmlElement& control : section.children) {
        const std::string* const event =
            control.children.size() == 1 ? control.children.front().attribute("midiEvent") : nullptr;
        if (event == nullptr || *event != "Pitch Bend") {
            continue;
        }
        const auto valueOf = [&control](std::string_view name, std::string_view otherwise) {
            const std::string* const value = control.attribute(name);
            return value != nullptr ? *value : std::string(otherwise);
        };
        const auto replace = [&control](std::string_view name, std::string_view value) {
            std::erase_if(control.attributes, [name](const auto& attribute) { return attribute.name == name; });
            set(control, name, value);
        };
        replace("release", "8192");
        if (valueOf("value", "0") == "63") {
            replace("value", "8192");
        }
        if (valueOf("min", "0") == "0" && valueOf("max", "127") == "127") {
            replace("min", "0");
            replace("max", "16383");
        }
    }
}

} // namespace Backend
