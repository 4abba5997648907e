// docs/file-formats.md says what readers, writers and check go by: its tables are made from the same descriptions.
#include "backend/ProgramXml.h"
#include "generators/SequenceXml.h"
#include "input/FunctionFactory.h"
#include "midiinput/TranslationFactory.h"
#include "platform/SafeFiles.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

std::string cellText(std::string text) {
    for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2) {
        text.insert(at, "\\");
    }
    return text;
}

std::string attributeRows(const ElementFormat& format) {
    std::string rows = "| attribute | holds | without it | |\n|---|---|---|---|\n";
    for (const AttributeFormat& attribute : format.attributes) {
        const std::string otherwise =
            attribute.defaultText.empty() ? "" : "`" + std::string(attribute.defaultText) + "`";
        rows += "| `" + std::string(attribute.name) + "` | " + cellText(attribute.describeValues()) + " | " +
                otherwise + " | " + cellText(std::string(attribute.meaning)) + " |\n";
    }
    return rows;
}

// Of the families of actions, which have chapters of their own.
bool isFamily(const std::vector<ElementFormat>& formats) {
    constexpr std::size_t many = 30;
    return formats.size() > many;
}

std::string childrenText(const ElementFormat& format) {
    if (isFamily(format.children)) {
        return format.name == "Translation" ? "one of the translations below" : "one of the functions below";
    }
    std::string text;
    for (const ElementFormat& child : format.children) {
        text += (text.empty() ? "`" : ", `") + std::string(child.name) + "`";
    }
    return text;
}

// The element and all below it.
void describe(const ElementFormat& format, const std::string& parent, std::string& text) {
    text += "### `" + std::string(format.name) + "`" + (parent.empty() ? "" : " in `" + parent + "`") + "\n\n";
    text += std::string(format.meaning);
    if (!format.id.empty()) {
        text += " Each there once, known by";
        for (const std::string_view id : format.id) {
            text += (id == format.id.front() ? " `" : ", `") + std::string(id) + "`";
        }
        text += ".";
    }
    if (!format.children.empty()) {
        text += std::string(format.oneChild ? " Holds one: " : " Holds: ") + childrenText(format) + ".";
    }
    text += "\n\n";
    if (!format.attributes.empty()) {
        text += attributeRows(format) + "\n";
    }
    if (!isFamily(format.children)) {
        for (const ElementFormat& child : format.children) {
            describe(child, std::string(format.name), text);
        }
    }
}

std::string familyText(const std::vector<ElementFormat>& formats) {
    std::string text = "| element | what it does | attributes |\n|---|---|---|\n";
    for (const ElementFormat& format : formats) {
        std::string attributes;
        for (const AttributeFormat& attribute : format.attributes) {
            attributes += (attributes.empty() ? "`" : "; `") + std::string(attribute.name) +
                          "`: " + cellText(attribute.describeValues());
        }
        text += "| `" + std::string(format.name) + "` | " + std::string(format.meaning) + " | " + attributes + " |\n";
    }
    return text + "\n";
}

std::string generated() {
    std::string text = "## Files\n\n";
    for (const ElementFormat& file : Backend::programFileFormats()) {
        text += "- `" + std::string(file.name) + "`: " + std::string(file.meaning) + "\n";
    }
    text += "- a section as the root: a preset file (.pst) of that section.\n\n## Elements\n\n";
    describe(Backend::programFormat(), {}, text);
    describe(Backend::SequenceManagement::sequenceFileFormat(), {}, text);
    text += "## Functions\n\n" + familyText(Backend::FunctionManagement::functionFormats());
    text += "## Translations\n\n" + familyText(Backend::MidiInput::TranslationManagement::translationFormat().children);
    return text;
}

TEST(FileFormats, TheDocumentationSaysWhatTheReadersDo) {
    const fs::path file = fs::path(TEMBREL_SOURCE_DIR) / "docs" / "file-formats.md";
    const auto document = Platform::readWholeFile(file, 1'000'000);
    ASSERT_TRUE(document) << document.fault().text();
    const std::string marker = "<!-- From here on made from the program's descriptions. -->\n\n";
    const std::size_t at = document.value().find(marker);
    ASSERT_NE(at, std::string::npos);
    const std::string expected = document.value().substr(0, at) + marker + generated();
    if (document.value() != expected) {
        fs::path actual = file;
        std::ofstream(actual.replace_extension(".actual"), std::ios::binary) << expected;
        FAIL() << "as it should be it is in docs/file-formats.actual";
    }
}

} // namespace
