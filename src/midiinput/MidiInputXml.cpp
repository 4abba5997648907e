#include "midiinput/MidiInputXml.h"

#include "core/FolderNames.h"
#include "midiinput/TranslationFactory.h"
#include "values/AttributeReading.h"
#include "values/MaxActions.h"
#include "values/SectionFormat.h"
#include "values/XmlWriter.h"

#include <utility>

namespace Backend::MidiInput {

namespace {

using Platform::XmlElement;

AttributeFormat byteFormat(std::string_view name, std::string_view meaning) {
    constexpr int highest = 255;
    AttributeFormat format = AttributeFormat::integerOf(name, "255", 0, highest, meaning);
    format.clamped = true;
    return format;
}

MidiEventConfiguration readConfiguration(const XmlElement& element) {
    static const ElementFormat& format = midiInputFormat().child("MidiEvent");
    MidiEventConfiguration configuration(MidiEvent{static_cast<std::uint8_t>(readInteger(element, format["input"])),
                                                   static_cast<std::uint8_t>(readInteger(element, format["channel"])),
                                                   readMidiEvent(element, format["midiEvent"])});
    for (const XmlElement& child : element.children) {
        if (configuration.translations.size() < maxActions) {
            configuration.translations.push_back(TranslationManagement::createTranslation(child));
        }
    }
    return configuration;
}

void writeConfiguration(XmlWriter& xml, const MidiEventConfiguration& configuration) {
    const MidiEvent& event = configuration.event;
    xml.begin("MidiEvent")
        .attribute("input", std::int32_t{event.input})
        .attribute("channel", std::int32_t{event.channel})
        .attribute("midiEvent", event.message)
        .content();
    for (const auto& translation : configuration.translations) {
        if (translation) {
            TranslationManagement::writeTranslation(xml.stream(), xml.depth(), *translation);
        } else {
            xml.begin("Translation").attribute("condition", "Off").content().end(); // reads as none again
        }
    }
    xml.end();
}

} // namespace

const ElementFormat& midiInputFormat() {
    static const ElementFormat format = [] {
        ElementFormat event;
        event.name = "MidiEvent";
        event.meaning = "What one kind of message does.";
        event.attributes = {
            byteFormat("input", "The input that it comes from, counted from 0; 255: any."),
            byteFormat("channel", "Its channel, counted from 0; 255: any."),
            AttributeFormat::of(AttributeKind::midiEvent, "midiEvent", "",
                                "The message; notes and controllers with their number."),
        };
        event.children = {TranslationManagement::translationFormat()};
        event.children.front().oneChild = true;
        event.id = {"input", "channel", "midiEvent"};
        return sectionFormat("MidiInput", "What becomes of incoming MIDI messages.", FolderNames::midiInputPresets,
                             "The messages are added to those that are there.", {std::move(event)});
    }();
    return format;
}

void readMidiInput(const XmlElement& section, MidiEventConfigurationMap& map) {
    const ElementFormat& format = midiInputFormat();
    if (section.name != format.name) {
        return;
    }
    map.beginReading(readBoolean(section, format["merge"]));
    for (const XmlElement& child : section.children) {
        if (child.name == "MidiEvent") {
            MidiEventConfiguration configuration = readConfiguration(child);
            const MidiEvent event = configuration.event;
            map.store(event, std::move(configuration));
        }
    }
}

void writeMidiInput(std::ostream& out, int depth, const MidiEventConfigurationMap& map) {
    XmlWriter xml(out, depth);
    xml.begin("MidiInput").attribute("merge", false).content();
    for (const auto& [event, configuration] : map) {
        if (!configuration.isDefault()) {
            writeConfiguration(xml, configuration);
        }
    }
    xml.end();
}

void writeMidiInput(std::ostream& out, int depth, const MidiEventConfigurationMap& map,
                    const std::vector<MidiEvent>& events) {
    XmlWriter xml(out, depth);
    xml.begin("MidiInput").attribute("merge", true).content();
    for (const MidiEvent& event : events) {
        const MidiEventConfiguration* configuration = map.find(event);
        writeConfiguration(xml, configuration != nullptr ? *configuration : MidiEventConfiguration(event));
    }
    xml.end();
}

} // namespace Backend::MidiInput
