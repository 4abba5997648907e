// Files that somebody has made to do harm: what they may cost is bounded, and nothing that is there is lost.
#include "BackendRig.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "values/Key.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using Backend::QelIF;
using Backend::QelMessageManager;

std::string times(int count, const std::string& text) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// In the section that begins so.
std::size_t countOf(const std::string& what, const std::string& begin, const std::string& text) {
    const std::string section = begin.substr(1, begin.find_first_of(" >") - 1);
    const std::size_t end = text.find("</" + section + ">");
    std::size_t count = 0;
    for (auto at = text.find(what, text.find("<" + section)); at < end; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

struct Flood {
    const char* name;
    const char* before;
    const char* many;
    const char* after;
    const char* counted;
};

TEST(HostileFiles, WhatOneTouchMayDoIsBounded) {
    constexpr const char* function = "<Function><Down><MidiNoteOn note=\"C4\"/></Down></Function>";
    constexpr const char* event = "<Function midiEvent=\"Controller Change,7\"/>";
    BackendRig rig;
    for (const Flood& flood : {
             Flood{"functions of a key", "<ComputerInput><Key id=\"Q\">", function, "</Key></ComputerInput>",
                   "<Function"},
             Flood{"functions of a button", "<Joystick><Button joystick=\"0\" button=\"1\">", function,
                   "</Button></Joystick>", "<Function"},
             Flood{"events of an axis", "<Joystick><Axis joystick=\"0\" axis=\"X\">", event, "</Axis></Joystick>",
                   "<Function"},
             Flood{"events of a control", "<Controls><Control cell=\"0,0\" type=\"knob\">", event,
                   "</Control></Controls>", "<Function"},
             Flood{"translations", "<MidiInput><MidiEvent midiEvent=\"Note On,C4\">",
                   "<Translation><MidiNoteOn note=\"C4\"/></Translation>", "</MidiEvent></MidiInput>", "<Translation"},
             Flood{"layers", "<Layers>", "<Layer/>", "</Layers>", "<Layer "},
             Flood{"oscillators", "<Oscillators>", "<Oscillator/>", "</Oscillators>", "<Oscillator "},
         }) {
        const std::string text = std::string("<QelProgramFile><Program>") + flood.before + times(3000, flood.many) +
                                 flood.after + "</Program></QelProgramFile>";
        std::string kept;
        rig.afterDirect([&](QelIF& qel) {
            qel.setProgramText(text);
            kept = qel.getProgramText();
        });
        EXPECT_EQ(countOf(flood.counted, flood.before, kept), 1024U) << flood.name;
    }
}

TEST(HostileFiles, FilesThatAreTooBigAreRefusedUnread) {
    BackendRig rig;
    const std::string program = rig.writeFile("big.prg", "<ProgramFile><Program name=\"big\"/></ProgramFile>");
    const std::string bank = rig.writeFile("big.bnk", "<Bank><Program name=\"big\"/></Bank>");
    const std::string preset = rig.writeFile("Layer Presets/big.pst", "<Layers/>");
    const std::string sequence =
        rig.writeFile("Sequences/big.seq", "<SequenceFile><Sequence>1</Sequence></SequenceFile>");
    for (const std::string& file : {program, bank, preset, sequence}) {
        std::filesystem::resize_file(file, std::uintmax_t{65} * 1024 * 1024);
    }
    std::string before;
    std::string after;
    rig.afterDirect([&](QelIF& qel) { before = qel.getProgramText(); });
    rig.after([&](QelMessageManager& backend) {
        backend.postLoadProgram(program);
        backend.postLoadBank(bank);
        backend.postImportVersion2Bank(bank, bank + ".out", {});
        backend.postExecuteFunction("<LoadLayerPreset preset=\"big\"/>");
    });
    const auto faults = rig.takeFaults();
    EXPECT_EQ(faults.size(), 4U);
    for (const std::string& fault : faults) {
        EXPECT_NE(fault.find("is bigger than"), std::string::npos) << fault;
    }
    rig.afterDirect([&](QelIF& qel) { after = qel.getProgramText(); });
    EXPECT_EQ(after, before);
    rig.afterDirect([&](QelIF& qel) {
        qel.setProgramText("<QelProgramFile><Program><Layers><Layer><SequenceSetting "
                           "preset=\"big\"/></Layer></Layers></Program></QelProgramFile>");
    });
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64") << "a sequence that cannot be read lets notes pass";
}

// Whatever takes a name takes one of 64 KiB, and says so where it cannot keep it.
TEST(HostileFiles, NamesOf64KiB) {
    const std::string name(65536, 'n');
    BackendRig rig;
    std::string kept;
    rig.after([&](QelMessageManager& backend) {
        backend.postChangeProgramName(name);
        backend.postAddSequencePreset(name, "0,1");
        backend.postLoadProgram(name);
        backend.postSaveToProgram(name, {});
        backend.postSaveToBank(name, {});
        for (const char* function : {"LoadComputerInputPreset", "LoadMidiInputPreset", "LoadControlPreset",
                                     "LoadJoystickInputPreset", "LoadLayerPreset", "LoadOscillatorPreset"}) {
            backend.postExecuteFunction("<" + std::string(function) + " preset=\"" + name + "\"/>");
        }
    });
    EXPECT_GE(rig.takeFaults().size(), 10U); // each but the program's own name
    rig.afterDirect([&](QelIF& qel) { kept = qel.getProgramText(); });
    EXPECT_NE(kept.find("name=\"" + name + "\""), std::string::npos);

    // Ports, too, and layers, controls and keys.
    for (auto& port : rig.outputs) {
        port.name = name + port.name;
    }
    rig.after([&](QelMessageManager& backend) { backend.postSetMidiOutputPorts(rig.outputs); });
    rig.afterDirect([&](QelIF& qel) {
        qel.setProgramText(
            "<QelProgramFile><Program><Controls preset=\"" + name + "\"/><Layers><Layer><SequenceSetting preset=\"" +
            name + "\"/></Layer></Layers><Controls><Control cell=\"0,0\" type=\"knob\" name=\"" + name +
            "\"/></Controls><ComputerInput><Key id=\"" + name + "\"/></ComputerInput></Program></QelProgramFile>");
    });
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
}

} // namespace
