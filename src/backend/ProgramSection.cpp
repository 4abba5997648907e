#include "backend/ProgramSection.h"

#include "backend/ProgramXml.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/XmlCharacters.h"
#include "values/XmlElementText.h"
#include "values/XmlWriter.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

namespace Backend {

using Platform::Fault;
using Platform::Result;
using Platform::XmlElement;

namespace {

// The name with a blank for each byte or character that cannot stand in an attribute or would not come back.
std::string asAttribute(std::string_view name) {
    std::string text = Platform::asXmlText(name);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return text;
}

} // namespace

ProgramSection::ProgramSection(MidiEngine::MidiEngineMessageManager& engine, std::vector<ProgramPart> parts,
                               const std::function<void(const Fault&)>& reportFault)
    : engine_(engine), parts_(std::move(parts)), reportFault_(reportFault) {}

void ProgramSection::apply(const Program& program) {
    for (const ProgramPart& part : parts_) {
        const auto section = std::find_if(program.sections.begin(), program.sections.end(),
                                          [&](const XmlElement& each) { return each.name == part.element; });
        section != program.sections.end() ? part.read(*section) : part.setDefault();
    }
    program_.name = program.name;
    program_.furtherAttributes = program.furtherAttributes;
    program_.sections.clear();
    for (const XmlElement& section : program.sections) {
        if (std::none_of(parts_.begin(), parts_.end(),
                         [&](const ProgramPart& part) { return part.element == section.name; })) {
            program_.sections.push_back(section);
        }
    }
    changeTempo(RelativeFixedValue::fixed(program.tempo));
    setTempoSource(program.tempoSource);
}

void ProgramSection::write(std::ostream& out, int depth, bool allowReferences) const {
    XmlWriter xml(out, depth);
    beginProgram(xml, out, program_);
    for (const ProgramPart& part : parts_) {
        part.write(out, depth + 1, allowReferences);
    }
    for (const XmlElement& section : program_.sections) {
        writeElement(out, depth + 1, section);
    }
    xml.end();
}

void ProgramSection::loadProgram(const std::filesystem::path& file) {
    const Result<Program> program = readProgramFile(file);
    program ? apply(program.value()) : reportFault_(program.fault());
}

bool ProgramSection::saveToProgram(const std::filesystem::path& file) const {
    std::ostringstream text;
    XmlWriter xml(text);
    xml.declaration();
    text << "<ProgramFile>\n";
    write(text, 0, true);
    text << "</ProgramFile>\n";
    const std::string content = text.str();
    Platform::Outcome done = Platform::success();
    if (const Result<XmlElement> readable = Platform::parseXml(content, Platform::textOf(file)); !readable) {
        done = readable.fault();
    } else {
        done = Platform::replaceFile(file, content);
    }
    if (!done) {
        reportFault_(done.fault());
    }
    return static_cast<bool>(done);
}

std::string ProgramSection::text() const {
    std::ostringstream text;
    XmlWriter xml(text);
    xml.declaration();
    text << "<QelProgramFile>\n";
    write(text, 0, false);
    text << "</QelProgramFile>\n";
    return text.str();
}

void ProgramSection::setText(const std::string& text) {
    const Result<Program> program = readExchangedProgram(text);
    program ? apply(program.value()) : reportFault_(program.fault());
}

void ProgramSection::rename(const std::string& name) {
    program_.name = asAttribute(name);
}

void ProgramSection::changeTempo(const RelativeFixedValue& tempo) {
    program_.tempo = std::clamp(tempo.applyTo(program_.tempo), minTempo, maxTempo);
    engine_.postSetTempo(program_.tempo);
}

void ProgramSection::setTempoSource(int source) {
    program_.tempoSource = source;
    engine_.postSetTempoSource(static_cast<unsigned char>(source));
}

} // namespace Backend
