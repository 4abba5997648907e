// Fuzzes the readers of presets of oscillators and of sequence files: what is read and written reads as the same again.
// The other kinds of presets are sections of programs: ProgramFuzzer. Seeds: tests/corpus/preset.
#include "generators/OscillatorXml.h"
#include "generators/SequenceXml.h"
#include "values/XmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <sstream>

namespace {

// Empty for other elements.
std::string written(const Platform::XmlElement& preset) {
    std::ostringstream text;
    if (preset.name == Backend::Oscillators::oscillatorsFormat().name) {
        Backend::Oscillators::OscList list;
        Backend::Oscillators::readOscillators(preset, list);
        Backend::Oscillators::writeOscillators(text, 0, list);
    } else if (preset.name == Backend::SequenceManagement::sequenceFileFormat().name) {
        XmlWriter xml(text);
        Backend::SequenceManagement::writeSequenceFile(xml, Backend::SequenceManagement::readSequenceFile(preset));
    }
    return text.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto preset = Platform::parseXml({reinterpret_cast<const char*>(data), size}, "fuzz");
    if (!preset) {
        return 0;
    }
    std::vector<Platform::Fault> faults;
    Backend::SequenceManagement::checkSequenceFile(preset.value(), "fuzz", faults);
    checkElement(preset.value(), Backend::Oscillators::oscillatorsFormat(), "fuzz", faults);
    if (const std::string once = written(preset.value()); !once.empty()) {
        const auto again = Platform::parseXml(once, "again");
        if (!again || written(again.value()) != once) {
            __builtin_trap();
        }
    }
    return 0;
}
