// Fuzzes the readers of program files, banks and presets: what is read and written reads as the same again. Seeds:
// tests/golden/*.prg, data/factory.
#include "backend/ProgramXml.h"
#include "generators/OscillatorXml.h"
#include "generators/SequenceXml.h"
#include "input/ComputerInputXml.h"
#include "input/ControlXml.h"
#include "input/JoystickXml.h"
#include "midiengine/LayerXml.h"
#include "midiengine/ZoneXml.h"
#include "midiinput/MidiInputXml.h"
#include "support/RecordingQel.h"
#include "values/XmlElementText.h"

#include <cstddef>
#include <cstdint>
#include <sstream>

namespace {

using Platform::XmlElement;

TestSupport::RecordingQel& facade() {
    static TestSupport::RecordingQel qel;
    return qel;
}

// What a section writes for an element; empty when the element is no section.
std::string written(const XmlElement& section) {
    std::ostringstream text;
    XmlWriter xml(text);
    if (section.name == "Layers") {
        Backend::Layers::LayerList layers;
        Backend::Layers::readLayers(section, layers);
        Backend::Layers::writeLayers(xml, layers);
    } else if (section.name == "Zones") {
        Backend::Zones::ZoneMap zones;
        Backend::Zones::readZones(section, zones);
        Backend::Zones::writeZones(xml, zones);
    } else if (section.name == "Oscillators") {
        Backend::Oscillators::OscList oscillators;
        Backend::Oscillators::readOscillators(section, oscillators);
        Backend::Oscillators::writeOscillators(text, 0, oscillators);
    } else if (section.name == "SequenceFile") {
        Backend::SequenceManagement::writeSequenceFile(xml, Backend::SequenceManagement::readSequenceFile(section));
    } else if (section.name == "Controls") {
        Backend::Controls::ControlMap controls;
        Backend::Controls::readControls(section, controls);
        Backend::Controls::writeControls(text, 0, controls);
    } else if (section.name == "ComputerInput") {
        Backend::ComputerInput::KeyConfigurationMap keys;
        Backend::ComputerInput::readComputerInput(section, facade(), keys);
        Backend::ComputerInput::writeComputerInput(text, 0, keys);
    } else if (section.name == "Joystick") {
        Backend::Joystick::JoystickMap joysticks;
        Backend::Joystick::readJoystick(section, facade(), joysticks);
        Backend::Joystick::writeJoystick(text, 0, joysticks);
    } else if (section.name == "MidiInput") {
        Backend::MidiInput::MidiEventConfigurationMap events;
        Backend::MidiInput::readMidiInput(section, events);
        Backend::MidiInput::writeMidiInput(text, 0, events);
    }
    return text.str();
}

void readAndWrite(const XmlElement& section) {
    const std::string once = written(section);
    if (once.empty()) {
        return;
    }
    const auto again = Platform::parseXml(once, "again");
    if (!again || written(again.value()) != once) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto root = Platform::parseXml(text, "fuzz");
    if (!root) {
        return 0;
    }
    std::vector<Platform::Fault> faults;
    checkElement(root.value(), Backend::programFormat(), "fuzz", faults);
    std::ostringstream kept;
    writeElement(kept, 0, root.value());
    if (!Platform::parseXml(kept.str(), "kept")) {
        __builtin_trap();
    }
    readAndWrite(root.value());
    for (XmlElement& child : root.value().children) {
        if (child.name == "Program") {
            const Backend::Program program = Backend::readProgram(std::move(child));
            for (const XmlElement& section : program.sections) {
                readAndWrite(section);
            }
        }
    }
    return 0;
}
