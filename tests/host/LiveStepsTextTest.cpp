#include "host/live/StepsText.h"
#include "midiinput/MidiInputXml.h"

#include <gtest/gtest.h>

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

TEST(StepsText, SaysWhyOnALineAStep) {
    MidiEventConfigurationMap map;
    readMidiInput(Platform::parseXml(R"(<MidiInput><MidiEvent input="0" midiEvent="Note On,60">
        <Translation condition="D2 gt 63"><MidiNoteOn zone="1" d1="D1 +12" d2="D2"/></Translation>
        <Translation condition="D1 ne 60"><DoNothing/></Translation>
        <Translation><ChangeTempo value="D2"/></Translation></MidiEvent></MidiInput>)",
                                     "test")
                      .value(),
                  map);
    InputSteps steps;
    steps.incoming = {MessageType::noteOn, 60, 100, 0, -1, -1, 0, Backend::noTicks};
    steps.lookUp = map.lookUp(steps.incoming);
    const auto& list = steps.lookUp.configuration->translations;
    steps.tried = {{list[0].get(), true, list[0]->getMidiMessage(steps.incoming)},
                   {list[1].get(), false, {}},
                   {list[2].get(), true, {}}};
    EXPECT_EQ(Host::textOf(steps, "In 1"),
              "In 1: Note On, channel 1, 60 (C4), 100\n"
              "  configured for its input on any channel: Note On,60\n"
              "  D2 gt 63 with 100: holds\n"
              "  MidiNoteOn zone=\"1\" d1=\"D1 +12\" d2=\"D2\": Note On, default channel, 72 (C5), 100, zone 1\n"
              "  D1 ne 60 with 60: does not hold\n"
              "  always\n"
              "  ChangeTempo value=\"D2\": done\n");

    InputSteps release;
    release.incoming = {MessageType::noteOff, 61, 9, 2, -1, -1, 0, Backend::noTicks};
    release.ended = {{MessageType::noteOff, 72, 9, 4, 1, -1, 0, Backend::noTicks}};
    EXPECT_EQ(Host::textOf(release, "In 1"),
              "In 1: Note Off, channel 3, 61 (C#4), 9\n"
              "  not configured\n"
              "  ends what its key has started: Note Off, channel 5, 72 (C5), 9, output 1\n");

    InputSteps clock;
    clock.incoming = {MessageType::timingTick, 0, 0, 0, -1, -1, 0, Backend::noTicks};
    clock.passedOn = clock.incoming;
    EXPECT_EQ(Host::textOf(clock, "X"), "X: Timing Tick\n  not configured\n  passed on: Timing Tick\n");
}

} // namespace
