#include "backend/ProgramXml.h"

#include "input/ComputerInputXml.h"
#include "input/ControlXml.h"
#include "input/JoystickXml.h"
#include "midiengine/LayerXml.h"
#include "midiengine/ZoneXml.h"
#include "platform/PathText.h"
#include "values/AttributeReading.h"

#include <algorithm>

namespace Backend {

namespace {

using Platform::Fault;
using Platform::Result;
using Platform::XmlElement;

ElementFormat laterSection(std::string_view name, std::string_view meaning) {
    ElementFormat format;
    format.name = name;
    format.meaning = meaning;
    format.unchecked = true;
    return format;
}

Result<XmlElement> readRoot(const std::filesystem::path& file, std::string_view root) {
    Result<XmlElement> document = Platform::readXmlFile(file);
    if (document && document.value().name != root) {
        const XmlElement& found = document.value();
        return Fault{Platform::textOf(file), found.line,
                     "the root element is <" + found.name + ">, not <" + std::string(root) + ">"};
    }
    return document;
}

std::vector<const XmlElement*> programsIn(const XmlElement& parent) {
    std::vector<const XmlElement*> programs;
    for (const XmlElement& child : parent.children) {
        if (child.name == "Program") {
            programs.push_back(&child);
        }
    }
    return programs;
}

} // namespace

const ElementFormat& programFormat() {
    static const ElementFormat format = [] {
        ElementFormat program;
        program.name = "Program";
        program.meaning = "One complete set-up of the controller.";
        program.attributes = {
            AttributeFormat::of(AttributeKind::text, "name", "", "The name that the user gave it."),
            AttributeFormat::integerOf("tempo", "120", minTempo, maxTempo, "Beats a minute."),
            AttributeFormat::integerOf("tempoSource", "0", 0, 128,
                                       "0: the internal clock; 1 + i: the MIDI clock of input i."),
        };
        program.attributes[1].clamped = true;
        program.attributes[2].clamped = true;
        program.children = {
            laterSection("Oscillators", "The oscillators."),
            Joystick::joystickFormat(),
            ComputerInput::computerInputFormat(),
            laterSection("MidiInput", "What becomes of incoming MIDI messages."),
            Controls::controlsFormat(),
            Layers::layersFormat(),
            Zones::zonesFormat(),
        };
        return program;
    }();
    return format;
}

Program readProgram(const XmlElement& element) {
    const ElementFormat& format = programFormat();
    Program program;
    program.name = readText(element, format["name"]);
    program.tempo = readInteger(element, format["tempo"]);
    program.tempoSource = readInteger(element, format["tempoSource"]);
    if (const XmlElement* layers = element.child("Layers")) {
        Layers::readLayers(*layers, program.layers);
    }
    if (const XmlElement* zones = element.child("Zones")) {
        Zones::readZones(*zones, program.zones);
    }
    if (const XmlElement* computerInput = element.child("ComputerInput")) {
        program.computerInput = *computerInput;
    }
    if (const XmlElement* controls = element.child("Controls")) {
        program.controls = *controls;
    }
    if (const XmlElement* joystick = element.child("Joystick")) {
        program.joystick = *joystick;
    }
    return program;
}

Result<Program> readProgramFile(const std::filesystem::path& file) {
    const Result<XmlElement> root = readRoot(file, "ProgramFile");
    if (!root) {
        return root.fault();
    }
    const std::vector<const XmlElement*> programs = programsIn(root.value());
    if (programs.size() != 1) {
        return Fault{Platform::textOf(file), programs.empty() ? root.value().line : programs[1]->line,
                     programs.empty() ? "there is no <Program>" : "there is more than one <Program>"};
    }
    return readProgram(*programs.front());
}

Result<std::vector<Program>> readBankFile(const std::filesystem::path& file) {
    const Result<XmlElement> root = readRoot(file, "Bank");
    if (!root) {
        return root.fault();
    }
    const std::vector<const XmlElement*> elements = programsIn(root.value());
    if (elements.empty()) {
        return Fault{Platform::textOf(file), root.value().line, "there is no <Program>"};
    }
    std::vector<Program> programs;
    programs.reserve(elements.size());
    for (const XmlElement* element : elements) {
        programs.push_back(readProgram(*element));
    }
    return programs;
}

} // namespace Backend
