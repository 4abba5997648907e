#include "backend/ProgramXml.h"

#include "generators/OscillatorXml.h"
#include "input/ComputerInputXml.h"
#include "input/ControlXml.h"
#include "input/JoystickXml.h"
#include "midiengine/LayerXml.h"
#include "midiengine/ZoneXml.h"
#include "midiinput/MidiInputXml.h"
#include "platform/PathText.h"
#include "values/AttributeReading.h"
#include "values/XmlElementText.h"

#include <optional>
#include <utility>

namespace Backend {

namespace {

using Platform::Fault;
using Platform::Result;
using Platform::XmlAttribute;
using Platform::XmlElement;

std::optional<Fault> wrongRoot(const XmlElement& root, std::string_view expected, const std::string& file) {
    if (root.name == expected) {
        return std::nullopt;
    }
    return Fault{file, root.line, "the root element is <" + root.name + ">, not <" + std::string(expected) + ">"};
}

Result<Program> onlyProgram(XmlElement root, std::string_view rootName, const std::string& file) {
    if (const std::optional<Fault> wrong = wrongRoot(root, rootName, file)) {
        return *wrong;
    }
    XmlElement* found = nullptr;
    for (XmlElement& child : root.children) {
        if (child.name == "Program") {
            if (found != nullptr) {
                return Fault{file, child.line, "there is more than one <Program>"};
            }
            found = &child;
        }
    }
    return found != nullptr ? Result<Program>(readProgram(std::move(*found)))
                            : Fault{file, root.line, "there is no <Program>"};
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
            Oscillators::oscillatorsFormat(),
            Joystick::joystickFormat(),
            ComputerInput::computerInputFormat(),
            MidiInput::midiInputFormat(),
            Controls::controlsFormat(),
            Layers::layersFormat(),
            Zones::zonesFormat(),
        };
        for (ElementFormat& section : program.children) {
            section.once = true;
        }
        return program;
    }();
    return format;
}

const std::vector<ElementFormat>& programFileFormats() {
    static const std::vector<ElementFormat> formats = [] {
        ElementFormat file;
        file.children = {programFormat()};
        file.oneChild = true;
        file.name = "ProgramFile";
        file.meaning = "A program file (.prg): one program.";
        ElementFormat exchange = file;
        exchange.name = "QelProgramFile";
        exchange.meaning = "A program by itself, without presets: for whoever keeps it elsewhere.";
        ElementFormat bank = file;
        bank.name = "Bank";
        bank.meaning = "A bank file (.bnk): a program for each slot.";
        bank.oneChild = false;
        return std::vector<ElementFormat>{file, exchange, bank};
    }();
    return formats;
}

Program readProgram(XmlElement element) {
    const ElementFormat& format = programFormat();
    Program program;
    program.name = readText(element, format["name"]);
    program.tempo = readInteger(element, format["tempo"]);
    program.tempoSource = readInteger(element, format["tempoSource"]);
    for (XmlAttribute& attribute : element.attributes) {
        if (!format.hasAttribute(attribute.name)) {
            program.furtherAttributes.push_back(std::move(attribute));
        }
    }
    program.sections = std::move(element.children);
    return program;
}

void beginProgram(XmlWriter& xml, std::ostream& out, const Program& program) {
    xml.begin("Program");
    writeAttribute(out, {"name", program.name}); // with whatever line ends it may have
    xml.attribute("tempo", program.tempo).attribute("tempoSource", program.tempoSource);
    for (const XmlAttribute& attribute : program.furtherAttributes) {
        writeAttribute(out, attribute);
    }
    xml.content();
}

Result<Program> readProgramFile(const std::filesystem::path& file) {
    Result<XmlElement> root = Platform::readXmlFile(file);
    return root ? onlyProgram(std::move(root.value()), "ProgramFile", Platform::textOf(file)) : root.fault();
}

Result<Program> readExchangedProgram(std::string_view text) {
    const std::string name = "program text";
    Result<XmlElement> root = Platform::parseXml(text, name);
    return root ? onlyProgram(std::move(root.value()), "QelProgramFile", name) : root.fault();
}

} // namespace Backend
