#include "backend/Version2Import.h"

#include "backend/ProgramXml.h"
#include "backend/Version2Line.h"
#include "input/PresetFolder.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "values/XmlElementText.h"
#include "values/XmlWriter.h"

#include <algorithm>
#include <sstream>

namespace Backend {

using Platform::Fault;
using Platform::Outcome;
using Platform::Result;
using Platform::XmlElement;

namespace {

constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;
constexpr const char* noSuchFile = "is no bank, program or preset of version 2";

// Builds one program, or the section of a preset, from line to line.
class Sections final {
public:
    // The elements of all sections, in the order of files.
    [[nodiscard]] Outcome add(const Version2Line& line) {
        const std::string_view name = sectionOfLine(line.kind);
        if (name.empty()) {
            return Fault{{}, line.number, "a line that is not understood"};
        }
        const auto known = std::find_if(sections_.begin(), sections_.end(),
                                        [name](const XmlElement& each) { return each.name == name; });
        if (known != sections_.end()) {
            return addLine(line, *known);
        }
        XmlElement section;
        section.name = name;
        section.line = line.number;
        section.attributes = {{"merge", "false"}};
        const Outcome added = addLine(line, section);
        if (added) {
            sections_.push_back(std::move(section));
        }
        return added;
    }
    // Null when no line belonged to it.
    [[nodiscard]] XmlElement* find(std::string_view name) {
        const auto known = std::find_if(sections_.begin(), sections_.end(),
                                        [name](const XmlElement& each) { return each.name == name; });
        return known != sections_.end() ? &*known : nullptr;
    }
    [[nodiscard]] XmlElement* first() { return sections_.empty() ? nullptr : &sections_.front(); }
    void write(std::ostream& out, int depth, const ElementFormat& format) {
        if (XmlElement* const section = find(format.name)) {
            convert(*section);
            writeElement(out, depth, *section);
        } else {
            XmlWriter xml(out, depth);
            xml.begin(format.name)
                .attribute("preset", Component::defaultPresetName)
                .attribute("merge", false)
                .content();
            xml.end();
        }
    }
    static void convert(XmlElement& section) {
        if (section.name == "Controls") {
            convertControls(section);
        }
    }

private:
    std::vector<XmlElement> sections_;
};

// Writes the programs of a bank or program file one behind the other.
class ProgramWriter final {
public:
    explicit ProgramWriter(std::ostream& out) : out_(out) {}

    void begin(const Version2Line& line) {
        finish();
        const ElementFormat& format = programFormat();
        XmlElement element;
        element.name = format.name;
        for (const char* const name : {"name", "tempo", "tempoSource"}) {
            element.attributes.push_back({name, std::string(line.field(element.attributes.size()))});
        }
        program_ = readProgram(element);
        isOpen_ = true;
        ++count_;
    }
    [[nodiscard]] Outcome add(const Version2Line& line) {
        return isOpen_ ? sections_.add(line) : Fault{{}, line.number, "a line before the first program"};
    }
    void finish() {
        if (!isOpen_) {
            return;
        }
        XmlWriter xml(out_);
        beginProgram(xml, out_, program_);
        for (const ElementFormat& format : programFormat().children) {
            sections_.write(out_, 1, format);
        }
        xml.end();
        sections_ = {};
        isOpen_ = false;
    }
    [[nodiscard]] int count() const { return count_; }

private:
    std::ostream& out_;
    Program program_;
    Sections sections_;
    bool isOpen_ = false;
    int count_ = 0;
};

Result<std::string> programsText(const std::vector<Version2Line>& lines, Version2Result& result,
                                 const std::string& name) {
    std::ostringstream text;
    const bool isBank = result.kind == Version2Kind::bank;
    XmlWriter(text).declaration();
    text << (isBank ? "<Bank>\n" : "<ProgramFile>\n");
    ProgramWriter writer(text);
    for (const Version2Line& line : lines) {
        const bool begins = line.kind == 'P' && (isBank || writer.count() == 0);
        if (begins) {
            writer.begin(line);
        } else if (const Outcome added = writer.add(line); !added) {
            result.notTaken.push_back({name, line.number, added.fault().reason});
        }
    }
    writer.finish();
    text << (isBank ? "</Bank>\n" : "</ProgramFile>\n");
    return writer.count() > 0 ? Result<std::string>(text.str()) : Fault{name, 0, "there is no program in it"};
}

Result<std::string> presetText(const std::vector<Version2Line>& lines, Version2Result& result,
                               const std::string& name) {
    std::ostringstream text;
    XmlWriter(text).declaration();
    Sections sections;
    for (const Version2Line& line : lines) {
        const bool isOther = sections.first() != nullptr && sectionOfLine(line.kind) != sections.first()->name;
        const Outcome added =
            isOther ? Fault{{}, line.number, "a line of another section than the first"} : sections.add(line);
        if (!added) {
            result.notTaken.push_back({name, line.number, added.fault().reason});
        }
    }
    if (sections.first() == nullptr) {
        return Fault{name, 0, "there is no section in it"};
    }
    Sections::convert(*sections.first());
    writeElement(text, 0, *sections.first());
    return text.str();
}

} // namespace

Result<Version2Result> convertVersion2(std::string_view text, const std::string& name) {
    std::vector<Version2Line> lines = version2Lines(text);
    Version2Result result;
    if (lines.empty() || lines.front().kind != 'V' || lines.front().field(0) != "2") {
        return Fault{name, lines.empty() ? 0 : lines.front().number, noSuchFile};
    }
    const std::string_view kind = lines.front().field(1);
    if (kind != "bank" && kind != "program" && kind != "preset") {
        return Fault{name, lines.front().number, noSuchFile};
    }
    result.kind = kind == "bank"      ? Version2Kind::bank
                  : kind == "program" ? Version2Kind::program
                                      : Version2Kind::preset;
    lines.erase(lines.begin());
    Result<std::string> converted =
        result.kind == Version2Kind::preset ? presetText(lines, result, name) : programsText(lines, result, name);
    if (!converted) {
        return converted.fault();
    }
    result.text = std::move(converted.value());
    return result;
}

Result<Version2Result> importVersion2(const std::filesystem::path& source, const std::filesystem::path& destination,
                                      std::optional<Version2Kind> expected) {
    const Result<std::string> text = Platform::readWholeFile(source, largestFile);
    if (!text) {
        return text.fault();
    }
    Result<Version2Result> converted = convertVersion2(text.value(), Platform::textOf(source));
    if (!converted) {
        return converted;
    }
    if (expected && converted.value().kind != *expected) {
        return Fault{Platform::textOf(source), 0, "is a version-2 file of another kind"};
    }
    // Nothing that cannot be read is written.
    if (const auto readable = Platform::parseXml(converted.value().text, Platform::textOf(destination)); !readable) {
        return readable.fault();
    }
    if (const Outcome written = Platform::replaceFile(destination, converted.value().text); !written) {
        return written.fault();
    }
    return converted;
}

} // namespace Backend
