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

class SectionWriter final {
public:
    SectionWriter(std::ostream& out, int depth) : out_(out), depth_(depth), xml_(out, depth) {}

    void begin(const KeyConfigurationMap& map, bool reference, bool merge) {
        xml_.begin("ComputerInput");
        if (reference) {
            xml_.attribute("preset", std::string_view(map.presetName));
        }
        xml_.attribute("merge", merge).attribute("useKeyUpMod", map.useKeyUpMod).content();
    }
    void write(const KeyConfiguration& configuration) {
        xml_.begin("Key").attribute("id", configuration.key).attribute("global", configuration.global).content();
        writeFunctionEntries(xml_, out_, depth_ + 1, configuration.entries);
        xml_.end();
    }
    void end() { xml_.end(); }

private:
    std::ostream& out_;
    int depth_;
    XmlWriter xml_;
};

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
    SectionWriter writer(out, depth);
    writer.begin(map, false, false);
    for (const auto& [key, configuration] : map) {
        writer.write(configuration);
    }
    writer.end();
}

void writeComputerInputReference(std::ostream& out, int depth, const KeyConfigurationMap& map) {
    SectionWriter writer(out, depth);
    writer.begin(map, true, false);
    writer.end();
}

void writeComputerInput(std::ostream& out, int depth, const KeyConfigurationMap& map, const std::vector<Key>& keys) {
    SectionWriter writer(out, depth);
    writer.begin(map, false, true);
    for (const Key& key : keys) {
        if (const KeyConfiguration* configuration = map.find(key)) {
            writer.write(*configuration);
        }
    }
    writer.end();
}

} // namespace Backend::ComputerInput
