#include "input/ControlXml.h"

#include "core/FolderNames.h"
#include "input/ValueEventXml.h"
#include "values/AttributeReading.h"
#include "values/MaxActions.h"
#include "values/SectionFormat.h"

#include <utility>

namespace Backend::Controls {

namespace {

constexpr std::int32_t largestSize = 16;

ElementFormat controlFormat() {
    constexpr auto anyLeast = AttributeFormat::NO_MINIMUM;
    constexpr auto anyGreatest = AttributeFormat::NO_MAXIMUM;
    ElementFormat control;
    control.name = "Control";
    control.meaning = "One control.";
    control.attributes = {
        AttributeFormat::of(AttributeKind::cell, "cell", "-1,-1", "Its place: the row, counted downward, the column."),
        AttributeFormat::of(AttributeKind::text, "name", "", "The caption."),
        AttributeFormat::wordOf("type", {"", "edit", "vfader", "hfader", "knob", "label"}, "",
                                "What it looks like; empty: it is not shown and sends nothing."),
        AttributeFormat::integerOf("value", "0", anyLeast, anyGreatest, "Where it stands."),
        AttributeFormat::integerOf("min", "0", anyLeast, anyGreatest, "One end of its range."),
        AttributeFormat::integerOf("max", "127", anyLeast, anyGreatest, "The other end."),
        AttributeFormat::integerOf("release", "-1", anyLeast, anyGreatest,
                                   "The value to which it springs back when it is let go; -1: it stays."),
        AttributeFormat::booleanOf("autoSend", false, "Its value is sent when the program starts."),
        AttributeFormat::integerOf("size", "1", 1, largestSize, "How many cells it spans."),
    };
    control.attributes.back().clamped = true;
    control.children = {valueEventFormat()};
    control.id = {"cell"};
    return control;
}

Control readControl(const Platform::XmlElement& element) {
    static const ElementFormat& format = controlsFormat().child("Control");
    Control control;
    control.cell = readCell(element, format["cell"]);
    control.name = readText(element, format["name"]);
    control.type = ControlType(readText(element, format["type"]));
    control.value = readInteger(element, format["value"]);
    control.min = readInteger(element, format["min"]);
    control.max = readInteger(element, format["max"]);
    control.release = readInteger(element, format["release"]);
    control.autoSend = readBoolean(element, format["autoSend"]);
    control.size = readInteger(element, format["size"]);
    for (const Platform::XmlElement& child : element.children) {
        if (child.name == "Function" && control.events.size() < maxActions) {
            control.events.push_back(readValueEvent(child));
        }
    }
    return control;
}

void writeControl(XmlWriter& xml, const Control& control) {
    xml.begin("Control")
        .attribute("cell", control.cell.toXmlString())
        .attribute("name", control.name)
        .attribute("type", control.type)
        .attribute("value", control.value)
        .attribute("min", control.min)
        .attribute("max", control.max)
        .attribute("release", control.release)
        .attribute("autoSend", control.autoSend)
        .attribute("size", control.size)
        .content();
    for (const ValueEvent& event : control.events) {
        xml.begin("Function");
        writeValueEvent(xml, event);
        xml.end();
    }
    xml.end();
}

} // namespace

const ElementFormat& controlsFormat() {
    static const ElementFormat format =
        sectionFormat("Controls", "The controls on screen.", FolderNames::controlPresets,
                      "The controls are added to those that are there.", {controlFormat()});
    return format;
}

void readControls(const Platform::XmlElement& section, ControlMap& map) {
    if (section.name != controlsFormat().name) {
        return;
    }
    map.beginReading(readBoolean(section, controlsFormat()["merge"]));
    for (const Platform::XmlElement& child : section.children) {
        if (child.name == "Control") {
            Control control = readControl(child);
            const Cell cell = control.cell;
            map.store(cell, std::move(control));
        }
    }
}

void writeControls(std::ostream& out, int depth, const ControlMap& map) {
    XmlWriter xml(out, depth);
    xml.begin("Controls").attribute("merge", false).content();
    for (const auto& [cell, control] : map) {
        writeControl(xml, control);
    }
    xml.end();
}

void writeControls(std::ostream& out, int depth, const ControlMap& map, const std::vector<Cell>& cells) {
    XmlWriter xml(out, depth);
    xml.begin("Controls").attribute("merge", true).content();
    for (const Cell& cell : cells) {
        if (const Control* control = map.find(cell)) {
            writeControl(xml, *control);
        }
    }
    xml.end();
}

} // namespace Backend::Controls
