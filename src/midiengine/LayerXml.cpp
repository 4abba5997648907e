#include "midiengine/LayerXml.h"

#include "core/FolderNames.h"
#include "values/AttributeReading.h"

#include <algorithm>
#include <cstdint>

namespace Backend::Layers {

namespace {

using Kind = AttributeKind;

AttributeFormat numbered(AttributeFormat format, std::int32_t minimum, std::int32_t maximum) {
    format.minimum = minimum;
    format.maximum = maximum;
    return format;
}

ElementFormat layerFormat() {
    ElementFormat layer;
    layer.name = "Layer";
    layer.meaning = "One destination of the notes that name neither output nor channel.";
    AttributeFormat toggle =
        AttributeFormat::wordOf("toggle", {"off", "type1", "type2"}, "off",
                                "A key switches its note on and off; type2: a second press strikes it again.");
    toggle.anyCase = true;
    layer.attributes = {
        AttributeFormat::booleanOf("mute", false, "The layer ignores everything."),
        AttributeFormat::booleanOf("mono", false, "A new note ends the one before."),
        toggle,
        AttributeFormat::booleanOf("useNoteStack", true, "A note that another source still holds goes on sounding."),
        AttributeFormat::of(Kind::note, "minNote", "C-1", "The lowest note that the layer takes."),
        AttributeFormat::of(Kind::note, "maxNote", "G9", "The highest note that it takes."),
        AttributeFormat::integerOf("minVelocity", "0", 0, 127, "The lowest velocity that it takes."),
        AttributeFormat::integerOf("maxVelocity", "127", 0, 127, "The highest velocity that it takes."),
        AttributeFormat::integerOf("zone", "-1", -1, 127, "The zone whose events it takes; -1: any."),
        AttributeFormat::integerOf("output", "-1", -1, 127, "The MIDI output; -1: the default output."),
        AttributeFormat::integerOf("channel", "0", 0, 15, "The MIDI channel, counted from 0."),
        numbered(AttributeFormat::of(Kind::relativeFixed, "transpose", "",
                                     "Semitones, or with a key steps of its scale; without a sign: the note itself."),
                 -127, 127),
        AttributeFormat::of(Kind::pitch, "key", "", "The key in whose major scale transpose counts."),
        numbered(AttributeFormat::of(Kind::relativeFixed, "velocity", "",
                                     "Added to velocities after scaling; without a sign: the velocity itself."),
                 -127, 127),
        AttributeFormat::of(Kind::fraction, "compress", "1_1", "Scales velocities: numerator_denominator."),
    };
    ElementFormat arpeggio;
    arpeggio.name = "Arpeggio";
    arpeggio.meaning = "The arpeggio that plays the layer's notes: one element of its kind.";
    arpeggio.children = ArpeggioManagement::arpeggioFormats();
    arpeggio.once = true;
    arpeggio.oneChild = true;
    ElementFormat sequence;
    sequence.name = "SequenceSetting";
    sequence.meaning = "The sequence that plays the layer's notes, or those of its arpeggio.";
    sequence.attributes = {
        AttributeFormat::presetOf("preset", FolderNames::sequences, "The name of the sequence; empty: none."),
        AttributeFormat::booleanOf("useNote", true, "The note offset of the step is added to the note."),
        AttributeFormat::booleanOf("useVelocity", true, "The velocity offset of the step is added to the velocity."),
        AttributeFormat::booleanOf("useLength", true, "A note ends after the length of its step at the latest."),
    };
    sequence.once = true;
    layer.children = {arpeggio, sequence};
    // The kind may also stand straight in the layer.
    layer.children.insert(layer.children.end(), arpeggio.children.begin(), arpeggio.children.end());
    return layer;
}

std::int8_t readSmall(const Platform::XmlElement& element, const AttributeFormat& format) {
    return static_cast<std::int8_t>(std::clamp<std::int32_t>(readInteger(element, format), INT8_MIN, INT8_MAX));
}

// The first element of a known kind, in an element "Arpeggio" or straight in the layer.
std::optional<ArpeggioManagement::ArpeggioSetting> readArpeggioOf(const Platform::XmlElement& parent) {
    for (const Platform::XmlElement& child : parent.children) {
        if (auto arpeggio =
                child.name == "Arpeggio" ? readArpeggioOf(child) : ArpeggioManagement::readArpeggio(child)) {
            return arpeggio;
        }
    }
    return std::nullopt;
}

std::optional<SequenceManagement::SequenceSetting> readSequenceOf(const Platform::XmlElement& layer) {
    static const ElementFormat& format = layersFormat().child("Layer").child("SequenceSetting");
    const Platform::XmlElement* const element = layer.child("SequenceSetting");
    const std::string name = element != nullptr ? readText(*element, format["preset"]) : std::string();
    if (name.empty()) {
        return std::nullopt;
    }
    return SequenceManagement::SequenceSetting{name, readBoolean(*element, format["useNote"]),
                                               readBoolean(*element, format["useVelocity"]),
                                               readBoolean(*element, format["useLength"]), nullptr};
}

void writeMachines(XmlWriter& xml, const Layer& layer) {
    if (layer.arpeggio) {
        xml.begin("Arpeggio").content();
        ArpeggioManagement::writeArpeggio(xml, *layer.arpeggio);
        xml.end();
    }
    if (layer.sequence) {
        xml.begin("SequenceSetting")
            .attribute("preset", layer.sequence->preset)
            .attribute("useNote", layer.sequence->useNote)
            .attribute("useVelocity", layer.sequence->useVelocity)
            .attribute("useLength", layer.sequence->useLength)
            .end();
    }
}

Layer readLayer(const Platform::XmlElement& element) {
    static const ElementFormat& format = layersFormat().child("Layer");
    Layer layer;
    layer.mute = readBoolean(element, format["mute"]);
    layer.mono = readBoolean(element, format["mono"]);
    layer.toggle = NoteToggle(readText(element, format["toggle"]));
    layer.useNoteStack = readBoolean(element, format["useNoteStack"]);
    layer.minNote = readNote(element, format["minNote"]);
    layer.maxNote = readNote(element, format["maxNote"]);
    layer.minVelocity = readSmall(element, format["minVelocity"]);
    layer.maxVelocity = readSmall(element, format["maxVelocity"]);
    layer.zone = readSmall(element, format["zone"]);
    layer.output = readSmall(element, format["output"]);
    layer.channel = readSmall(element, format["channel"]);
    layer.transpose = readRelativeFixed(element, format["transpose"]);
    layer.key = readNote(element, format["key"]);
    layer.velocity = readRelativeFixed(element, format["velocity"]);
    layer.compress = readFraction(element, format["compress"]);
    layer.arpeggio = readArpeggioOf(element);
    layer.sequence = readSequenceOf(element);
    return layer;
}

} // namespace

const ElementFormat& layersFormat() {
    static const ElementFormat format = [] {
        ElementFormat section;
        section.name = "Layers";
        section.meaning = "The layers, in order.";
        section.attributes = {
            AttributeFormat::booleanOf("merge", false, "The layers are added to those that are there."),
            AttributeFormat::presetOf("preset", FolderNames::layerPresets,
                                      "The layer preset that the section stands for."),
        };
        section.children = {layerFormat()};
        return section;
    }();
    return format;
}

LayerList defaultLayers() {
    return LayerList(1);
}

void readLayers(const Platform::XmlElement& section, LayerList& layers) {
    if (!readBoolean(section, layersFormat()["merge"])) {
        layers.clear();
    }
    for (const Platform::XmlElement& child : section.children) {
        if (child.name == "Layer" && layers.size() < maxLayers) {
            layers.push_back(readLayer(child));
            layers.back().index = static_cast<std::int32_t>(layers.size()) - 1;
        }
    }
}

void writeLayers(XmlWriter& xml, const LayerList& layers, bool merge) {
    xml.begin("Layers").attribute("merge", merge).content();
    for (const Layer& layer : layers) {
        xml.begin("Layer")
            .attribute("mute", layer.mute)
            .attribute("mono", layer.mono)
            .attribute("toggle", layer.toggle)
            .attribute("useNoteStack", layer.useNoteStack)
            .attribute("minNote", layer.minNote)
            .attribute("maxNote", layer.maxNote)
            .attribute("minVelocity", std::int32_t{layer.minVelocity})
            .attribute("maxVelocity", std::int32_t{layer.maxVelocity})
            .attribute("zone", std::int32_t{layer.zone})
            .attribute("output", std::int32_t{layer.output})
            .attribute("channel", std::int32_t{layer.channel})
            .attribute("transpose", layer.transpose)
            .attribute("key", layer.key.getPitchName())
            .attribute("velocity", layer.velocity)
            .attribute("compress", layer.compress);
        writeMachines(xml, layer);
        xml.end();
    }
    xml.end();
}

} // namespace Backend::Layers
