#include "generators/OscillatorXml.h"

#include "core/FolderNames.h"
#include "values/AttributeReading.h"
#include "values/SectionFormat.h"
#include "values/Words.h"
#include "values/XmlWriter.h"

#include <array>
#include <string_view>

namespace Backend::Oscillators {

namespace {

// At the number of their type.
constexpr std::array<std::string_view, 5> typeWords{"sin", "tri", "saw", "pulse", "random"};
constexpr std::string_view stepped = "ppq";

std::string_view wordOf(OscillatorType type) {
    return typeWords[type == OscillatorType::unknown ? 0 : static_cast<std::size_t>(type)];
}

ElementFormat oscillatorFormat() {
    constexpr auto anyLeast = AttributeFormat::NO_MINIMUM;
    constexpr auto anyGreatest = AttributeFormat::NO_MAXIMUM;
    ElementFormat oscillator;
    oscillator.name = "Oscillator";
    oscillator.meaning = "One oscillator.";
    oscillator.attributes = {
        AttributeFormat::wordOf("type", {typeWords.begin(), typeWords.end()}, typeWords[0], "The shape of its wave."),
        AttributeFormat::integerOf("speed", "480", 1, anyGreatest, "The period, in ticks."),
        AttributeFormat::integerOf("min", "0", anyLeast, anyGreatest, "One end of its range."),
        AttributeFormat::integerOf("max", "127", anyLeast, anyGreatest,
                                   "The other end; below min the wave is mirrored."),
        AttributeFormat::of(AttributeKind::text, "speedMode", "",
                            "ppq: its speed is changed by note lengths; anything else: along a scale."),
        AttributeFormat::integerOf("stopValue", "-1", anyLeast, anyGreatest,
                                   "The value that is sent when it stops; -1: none."),
        AttributeFormat::integerOf("detail", "10", 1, anyGreatest,
                                   "Of a sine, triangle or saw every so manieth change is sent."),
        AttributeFormat::of(AttributeKind::midiEvent, "midiMessage", "", "The message whose value it moves."),
        AttributeFormat::integerOf("output", "255", -1, 255, "The MIDI output; 255: the default output."),
        AttributeFormat::integerOf("channel", "-1", -1, 15, "The MIDI channel, counted from 0; -1: the default one."),
        AttributeFormat::integerOf("zone", "255", -1, 255, "The zone through which it plays; 255: none."),
    };
    return oscillator;
}

// Deliberately the lowest eight bits: 255 in files is -1 here.
std::int8_t readByte(const Platform::XmlElement& element, const AttributeFormat& format) {
    return static_cast<std::int8_t>(readInteger(element, format));
}

OscillatorType readType(const Platform::XmlElement& element, const AttributeFormat& format) {
    return static_cast<OscillatorType>(placeOf(readText(element, format), typeWords).value_or(-1));
}

Oscillator readOscillator(const Platform::XmlElement& element) {
    static const ElementFormat& format = oscillatorsFormat().child("Oscillator");
    Oscillator oscillator;
    oscillator.type = readType(element, format["type"]);
    oscillator.speed = readInteger(element, format["speed"]);
    oscillator.min = readInteger(element, format["min"]);
    oscillator.max = readInteger(element, format["max"]);
    oscillator.steppedSpeed = readText(element, format["speedMode"]) == stepped;
    oscillator.stopValue = readInteger(element, format["stopValue"]);
    oscillator.detail = readInteger(element, format["detail"]);
    oscillator.midiMessage = readMidiEvent(element, format["midiMessage"]);
    oscillator.output = readByte(element, format["output"]);
    oscillator.channel = readByte(element, format["channel"]);
    oscillator.zone = readByte(element, format["zone"]);
    return oscillator;
}

void writeOscillator(XmlWriter& xml, const Oscillator& oscillator) {
    xml.begin("Oscillator")
        .attribute("type", wordOf(oscillator.type))
        .attribute("speed", oscillator.speed)
        .attribute("min", oscillator.min)
        .attribute("max", oscillator.max)
        .attribute("speedMode", oscillator.steppedSpeed ? stepped : "time")
        .attribute("stopValue", oscillator.stopValue)
        .attribute("detail", oscillator.detail)
        .attribute("midiMessage", oscillator.midiMessage.isValid() ? oscillator.midiMessage.toXmlString() : "")
        .attribute("output", std::int32_t{static_cast<std::uint8_t>(oscillator.output)})
        .attribute("channel", std::int32_t{oscillator.channel})
        .attribute("zone", std::int32_t{static_cast<std::uint8_t>(oscillator.zone)})
        .end();
}

} // namespace

const ElementFormat& oscillatorsFormat() {
    static const ElementFormat format =
        sectionFormat("Oscillators", "The oscillators, in order.", FolderNames::oscillatorPresets,
                      "The oscillators are added to those that are there.", {oscillatorFormat()});
    return format;
}

void readOscillators(const Platform::XmlElement& section, OscList& list) {
    if (section.name != oscillatorsFormat().name) {
        return;
    }
    if (!readBoolean(section, oscillatorsFormat()["merge"])) {
        list.clear();
    }
    for (const Platform::XmlElement& child : section.children) {
        if (child.name == "Oscillator") {
            list.append(readOscillator(child));
        }
    }
}

void writeOscillators(std::ostream& out, int depth, const OscList& list) {
    XmlWriter xml(out, depth);
    xml.begin("Oscillators").attribute("merge", false).content();
    for (const Oscillator& oscillator : list) {
        writeOscillator(xml, oscillator);
    }
    xml.end();
}

void writeOscillators(std::ostream& out, int depth, const OscList& list, const std::vector<OscId>& ids) {
    XmlWriter xml(out, depth);
    xml.begin("Oscillators").attribute("merge", true).content();
    for (const OscId id : ids) {
        if (const Oscillator* oscillator = list.find(id)) {
            writeOscillator(xml, *oscillator);
        }
    }
    xml.end();
}

} // namespace Backend::Oscillators
