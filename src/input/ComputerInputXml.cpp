#include "input/ComputerInputXml.h"

#include "core/FolderNames.h"
#include "input/FunctionEntryXml.h"
#include "values/AttributeReading.h"
#include "values/SectionFormat.h"
#include "values/XmlWriter.h"

#include <ostream>
#include <utility>

namespace Backend::ComputerInput {

namespace {

using Platform::XmlElement;

ElementFormat element(std::string_view name, std::string_view meaning, std::vector<AttributeFormat> attributes,
                      std::vector<ElementFormat> children) {
    ElementFormat format;
    format.name = name;
    format.meaning = meaning;
    format.attributes = std::move(attributes);
    format.children = std::move(children);
    return format;
}

KeyConfiguration readKeyConfiguration(const XmlElement& element, QelIF& qel) {
    static const ElementFormat& format = computerInputFormat().child("Key");
    KeyConfiguration configuration{readKey(element, format["id"])};
    configuration.global = readBoolean(element, format["global"]);
    configuration.entries = readFunctionEntries(element, qel);
    return configuration;
}

enum class Reference { no, preset };

void beginSection(XmlWriter& xml, const KeyConfigurationMap& map, Reference reference, bool merge) {
    xml.begin("ComputerInput");
    if (reference == Reference::preset) {
        xml.attribute("preset", std::string_view(map.presetName));
    }
    xml.attribute("merge", merge).attribute("useKeyUpMod", map.useKeyUpMod).content();
}

void writeKey(XmlWriter& xml, const KeyConfiguration& configuration) {
    xml.begin("Key").attribute("id", configuration.key).attribute("global", configuration.global).content();
    writeFunctionEntries(xml, configuration.entries);
    xml.end();
}

} // namespace

const ElementFormat& computerInputFormat() {
    static const ElementFormat format = [] {
        ElementFormat key = element(
            "Key", "What one key does.",
            {AttributeFormat::of(AttributeKind::key, "id", "", "The name of the key, its modifiers before it."),
             AttributeFormat::booleanOf("global", true, "The key also counts while another program has the keyboard.")},
            {functionEntryFormat()});
        key.id = {"id"};
        ElementFormat section = sectionFormat("ComputerInput", "What the keys of the computer keyboard do.",
                                              FolderNames::computerInputPresets,
                                              "The keys are added to those that are there.", {std::move(key)});
        section.attributes.push_back(AttributeFormat::booleanOf(
            "useKeyUpMod", false, "The up functions are those of the key with the modifiers held at its release."));
        return section;
    }();
    return format;
}

void readComputerInput(const XmlElement& section, QelIF& qel, KeyConfigurationMap& map) {
    const ElementFormat& format = computerInputFormat();
    if (section.name != format.name) {
        return;
    }
    map.useKeyUpMod = readBoolean(section, format["useKeyUpMod"]);
    map.beginReading(readBoolean(section, format["merge"]));
    for (const XmlElement& child : section.children) {
        if (child.name == "Key") {
            KeyConfiguration configuration = readKeyConfiguration(child, qel);
            const Key key = configuration.key;
            map.store(key, std::move(configuration));
        }
    }
}

void writeComputerInput(std::ostream& out, int depth, const KeyConfigurationMap& map) {
    XmlWriter xml(out, depth);
    beginSection(xml, map, Reference::no, false);
    for (const auto& [key, configuration] : map) {
        writeKey(xml, configuration);
    }
    xml.end();
}

void writeComputerInputReference(std::ostream& out, int depth, const KeyConfigurationMap& map) {
    XmlWriter xml(out, depth);
    beginSection(xml, map, Reference::preset, false);
    xml.end();
}

void writeComputerInput(std::ostream& out, int depth, const KeyConfigurationMap& map, const std::vector<Key>& keys) {
    XmlWriter xml(out, depth);
    beginSection(xml, map, Reference::no, true);
    for (const Key& key : keys) {
        if (const KeyConfiguration* configuration = map.find(key)) {
            writeKey(xml, *configuration);
        }
    }
    xml.end();
}

} // namespace Backend::ComputerInput
