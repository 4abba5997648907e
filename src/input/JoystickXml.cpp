#include "input/JoystickXml.h"

#include "core/FolderNames.h"
#include "input/FunctionEntryXml.h"
#include "input/ValueEventXml.h"
#include "values/AttributeReading.h"
#include "values/MaxActions.h"
#include "values/SectionFormat.h"

#include <utility>

namespace Backend::Joystick {

namespace {

using Platform::XmlElement;

AttributeFormat joystickNumber() {
    return AttributeFormat::integerOf("joystick", "0", 0, 1, "The joystick, counted from 0.");
}

ElementFormat axisFormat() {
    constexpr auto anyLeast = AttributeFormat::NO_MINIMUM;
    constexpr auto anyGreatest = AttributeFormat::NO_MAXIMUM;
    ElementFormat event = valueEventFormat();
    event.attributes.insert(
        event.attributes.end(),
        {AttributeFormat::integerOf("min", "0", anyLeast, anyGreatest, "The value at one end of the axis."),
         AttributeFormat::integerOf("max", "127", anyLeast, anyGreatest, "The value at the other end."),
         AttributeFormat::integerOf("offset", "0", anyLeast, anyGreatest, "Added to the value.")});
    ElementFormat axis;
    axis.name = "Axis";
    axis.meaning = "What one axis sends.";
    axis.attributes = {
        joystickNumber(),
        AttributeFormat::wordOf("axis", {"", "X", "Y", "Z", "U", "V", "R"}, "", "Its letter; empty: no axis."),
    };
    axis.children = {std::move(event)};
    axis.id = {"joystick", "axis"};
    return axis;
}

ElementFormat buttonFormat() {
    ElementFormat button;
    button.name = "Button";
    button.meaning = "What one button does.";
    button.attributes = {
        joystickNumber(),
        AttributeFormat::integerOf("button", "0", 0, 31, "The button, counted from 0."),
    };
    button.children = {ComputerInput::functionEntryFormat()};
    button.id = {"joystick", "button"};
    return button;
}

AxisConfiguration readAxis(const XmlElement& element) {
    static const ElementFormat& format = joystickFormat().child("Axis");
    static const ElementFormat& eventFormat = format.child("Function");
    AxisConfiguration configuration{{readInteger(element, format["joystick"]),
                                     JoyAxisElementId::axisFromLetter(readText(element, format["axis"]))}};
    for (const XmlElement& child : element.children) {
        if (child.name == "Function" && configuration.events.size() < maxActions) {
            configuration.events.push_back({readValueEvent(child), readInteger(child, eventFormat["min"]),
                                            readInteger(child, eventFormat["max"]),
                                            readInteger(child, eventFormat["offset"])});
        }
    }
    return configuration;
}

JoystickButtonConfiguration readButton(const XmlElement& element, QelIF& qel) {
    static const ElementFormat& format = joystickFormat().child("Button");
    return {{readInteger(element, format["joystick"]), readInteger(element, format["button"])},
            ComputerInput::readFunctionEntries(element, qel)};
}

void writeAxis(XmlWriter& xml, const AxisConfiguration& configuration) {
    xml.begin("Axis")
        .attribute("joystick", configuration.axis.joystick)
        .attribute("axis", configuration.axis.axisLetter())
        .content();
    for (const AxisEvent& event : configuration.events) {
        xml.begin("Function");
        writeValueEvent(xml, event.event);
        xml.attribute("min", event.min).attribute("max", event.max).attribute("offset", event.offset).end();
    }
    xml.end();
}

void writeButton(XmlWriter& xml, const JoystickButtonConfiguration& configuration) {
    xml.begin("Button")
        .attribute("joystick", configuration.button.joystick)
        .attribute("button", configuration.button.button)
        .content();
    ComputerInput::writeFunctionEntries(xml, configuration.entries);
    xml.end();
}

} // namespace

const ElementFormat& joystickFormat() {
    static const ElementFormat format =
        sectionFormat("Joystick", "What the axes and buttons of the joysticks do.", FolderNames::joystickPresets,
                      "The axes and buttons are added to those that are there.", {axisFormat(), buttonFormat()});
    return format;
}

void readJoystick(const XmlElement& section, QelIF& qel, JoystickMap& map) {
    if (section.name != joystickFormat().name) {
        return;
    }
    const bool merge = readBoolean(section, joystickFormat()["merge"]);
    map.axes.beginReading(merge);
    map.buttons.beginReading(merge);
    for (const XmlElement& child : section.children) {
        if (child.name == "Axis") {
            AxisConfiguration axis = readAxis(child);
            const JoyAxisElementId id = axis.axis;
            map.axes.store(id, std::move(axis));
        } else if (child.name == "Button") {
            JoystickButtonConfiguration button = readButton(child, qel);
            const JoyButtonElementId id = button.button;
            map.buttons.store(id, std::move(button));
        }
    }
}

void writeJoystick(std::ostream& out, int depth, const JoystickMap& map) {
    XmlWriter xml(out, depth);
    xml.begin("Joystick").attribute("merge", false).content();
    for (const auto& [id, axis] : map.axes) {
        writeAxis(xml, axis);
    }
    for (const auto& [id, button] : map.buttons) {
        writeButton(xml, button);
    }
    xml.end();
}

void writeJoystick(std::ostream& out, int depth, const JoystickMap& map, const JoystickSelection& selection) {
    XmlWriter xml(out, depth);
    xml.begin("Joystick").attribute("merge", true).content();
    for (const JoyAxisElementId& id : selection.axes) {
        if (const AxisConfiguration* axis = map.axes.find(id)) {
            writeAxis(xml, *axis);
        }
    }
    for (const JoyButtonElementId& id : selection.buttons) {
        if (const JoystickButtonConfiguration* button = map.buttons.find(id)) {
            writeButton(xml, *button);
        }
    }
    xml.end();
}

} // namespace Backend::Joystick
