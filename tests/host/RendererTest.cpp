#include "host/Rendering.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

using Host::Renderer;

namespace {

constexpr const char* layeredProgram = R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile><Program name="P" tempo="100" tempoSource="0"><Layers merge="false">
<Layer output="0" channel="1" transpose="+12"/>
<Layer output="1" channel="2" mono="true" minNote="C4"/>
<Layer output="2" channel="3" toggle="type1" maxNote="B3"/>
<Layer output="0" channel="4" toggle="type2" minVelocity="64" useNoteStack="false"/>
</Layers></Program></ProgramFile>
)";

// Translations that play, and some that change the program, MIDI input itself among it.
constexpr const char* translatedProgram = R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile><Program name="P" tempo="100" tempoSource="0"><MidiInput>
<MidiEvent midiEvent="Note On,58"><Translation condition="D2 gt 40"><MidiNoteOn output="2" channel="9" d1="D1 +12" d2="D2"/></Translation></MidiEvent>
<MidiEvent input="1" midiEvent="Note On,59"><Translation><Unchanged channel="unchanged" d1="D1" d2="D2"/></Translation><Translation><ChangeLayerTranspose type="0" value="D2 -64"/></Translation></MidiEvent>
<MidiEvent channel="1" midiEvent="Note Off,60"><Translation condition="D2 lt 20"><ResetQel/></Translation></MidiEvent>
<MidiEvent midiEvent="Controller Change,61"><Translation><ChangeDefaultMidiOutput type="D2"/></Translation><Translation condition="D2 gt 100"><LoadMidiInputPreset preset="000 - Default"/></Translation></MidiEvent>
<MidiEvent midiEvent="Program Change"><Translation><ChangeTempo value="D1"/></Translation><Translation><MidiControllerChange d1="D1" d2="D1"/></Translation></MidiEvent>
<MidiEvent midiEvent="Key Pressure"><Translation><DoNothing/></Translation></MidiEvent>
</MidiInput><Layers merge="false"><Layer output="255" channel="1"/></Layers></Program></ProgramFile>
)";

TEST(Renderer, PlaysInTheTickOfTheLine) {
    EXPECT_EQ(renderScript("0 midi 0 0x90 60 100\n0 midi 0 0xB0 7 1\n480 midi 1 0x90 60 0\n20000 midi 0 0xC5 9\n"),
              "0 0 90 60 100\n0 0 B0 7 1\n480 0 80 60 100\n20000 0 C0 9\n");
    EXPECT_EQ(renderScript("2000000000 midi 0 0xC0 9"), "2000000000 0 C0 9\n");
    EXPECT_EQ(renderScript(""), "");
    EXPECT_EQ(renderScript("0 midi 0 0xF0 1 2\n0 midi 0 0xF8\n"), "0 0 F8\n");
}

TEST(Renderer, StopsBeforeTheTickOfTheEnd) {
    EXPECT_EQ(renderScript("0 midi 0 0x90 60 1\n10 midi 0 0x80 60 1\n10 end"), "0 0 90 60 1\n");
    EXPECT_EQ(renderScript("0 midi 0 0x90 60 1\n10 midi 0 0x80 60 1\n11 end"), "0 0 90 60 1\n10 0 80 60 1\n");
    EXPECT_EQ(renderScript("0 midi 0 0x90 60 1\n0 end"), "");
}

TEST(Renderer, ResetsEndWhatSoundsInTheirTick) {
    EXPECT_EQ(renderScript("0 midi 0 0x90 60 1\n5 reset\n9 midi 0 0xC0 1"), "0 0 90 60 1\n5 0 80 60 100\n9 0 C0 1\n");
}

TEST(Renderer, PlaysTheTickOfTheLastLineWhateverTheTail) {
    for (const int tail : {0, 1, 7680}) {
        EXPECT_EQ(renderScript("7 midi 0 0x90 60 1", {}, Renderer::usualBatch, tail), "7 0 90 60 1\n") << tail;
    }
}

// A script of everything that this renderer hands in, with many lines a tick and pauses longer than a slice.
std::string randomScript(RandomCases& random) {
    std::ostringstream script;
    int tick = 0;
    for (int count = random.number(1, 600); count > 0; --count) {
        tick += random.number(0, 2) == 0 ? random.number(0, 40) : 0;
        tick += random.number(0, 60) == 0 ? random.number(0, 12'000) : 0;
        script << tick;
        const int kind = random.number(0, 99);
        if (kind == 0) {
            script << " reset\n";
        } else if (kind == 1) {
            script << " tempo " << random.number(10, 500) << '\n';
        } else {
            static constexpr int types[] = {0x80, 0x80, 0x80, 0x90, 0x90, 0x90, 0x90, 0xA0, 0xB0, 0xC0, 0xE0};
            const int type = types[random.number(0, 10)];
            script << " midi " << random.number(0, 1) << ' ' << (type | random.number(0, 1)) << ' '
                   << random.number(58, 63);
            script << ' ' << (type == 0xC0 ? 0 : random.number(0, 127)) << '\n';
        }
    }
    if (random.number(0, 1) == 0) {
        script << tick + random.number(0, 10) << " end\n";
    }
    return script.str();
}

// Handed in one by one, in small batches with the next one on its way, or all at once: the same bytes.
TEST(Renderer, GivesTheSameWhateverTheBatches) {
    RandomCases random;
    for (int round = 0; round < 20; ++round) {
        const std::string script = randomScript(random);
        const char* const programs[] = {"", layeredProgram, translatedProgram, translatedProgram};
        const std::string program = programs[random.number(0, 3)];
        const std::string exact = renderScript(script, program, 0);
        for (const std::size_t batch : {std::size_t{1}, random.number<std::size_t>(2, 50), Renderer::usualBatch}) {
            ASSERT_EQ(renderScript(script, program, batch), exact) << "in batches of " << batch << '\n' << script;
        }
    }
}

// Batches of the usual size, many of them, against smaller ones.
TEST(Renderer, GivesTheSameOverManyBatches) {
    RandomCases random;
    std::string script;
    int tick = 0;
    for (int count = 0; count < 30'000; ++count) {
        tick += random.number(0, 3) == 0 ? random.number(0, 3) : 0;
        script += std::to_string(tick) + " midi 0 " + std::to_string(random.number(0, 1) == 0 ? 0x80 : 0x90) + ' ' +
                  std::to_string(random.number(0, 127)) + " 64\n";
    }
    const std::string batched = renderScript(script, layeredProgram);
    EXPECT_GT(batched.size(), 100'000U);
    EXPECT_EQ(batched, renderScript(script, layeredProgram));
    EXPECT_EQ(batched, renderScript(script, layeredProgram, 100));
}

} // namespace
