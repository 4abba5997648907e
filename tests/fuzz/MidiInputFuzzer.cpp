// Fuzzes the reader of the section "MidiInput": what is written says the same again, and every translation can be done.
// Seeds: tests/corpus/midiinput.
#include "midiinput/MidiInputXml.h"
#include "support/RecordingQel.h"

#include <cstddef>
#include <cstdint>
#include <sstream>

using namespace Backend::MidiInput;

namespace {

std::string written(const MidiEventConfigurationMap& map) {
    std::ostringstream out;
    std::vector<MidiEvent> all;
    for (const auto& [event, configuration] : map) {
        all.push_back(event);
    }
    writeMidiInput(out, 0, map);
    writeMidiInput(out, 0, map, all);
    return out.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto section = Platform::parseXml(std::string(reinterpret_cast<const char*>(data), size), "fuzz");
    if (!section) {
        return 0;
    }
    MidiEventConfigurationMap map;
    readMidiInput(section.value(), map);
    std::vector<Platform::Fault> faults;
    checkElement(section.value(), midiInputFormat(), "fuzz", faults);

    TestSupport::RecordingQel qel;
    for (const auto& [event, configuration] : map) {
        const Backend::MidiEngine::QelMidiMessage incoming(event.message, -1, 3, -1, Cell{});
        if (map.lookUp(incoming).configuration == nullptr && event.input == 255 && event.channel == 255) {
            __builtin_trap();
        }
        for (const auto& translation : configuration.translations) {
            if (translation) {
                translation->setQel(&qel);
                static_cast<void>(translation->getCondition().holdsFor(event.message));
                translation->execute(incoming);
                const auto message = translation->getMidiMessage(incoming);
                if (message && (message->getD1() < 0 || message->getD2() < 0)) {
                    __builtin_trap();
                }
            }
        }
    }
    const std::string text = written(map);
    std::istringstream whole(text.substr(0, text.find("</MidiInput>")) + "</MidiInput>");
    MidiEventConfigurationMap again;
    const auto reread = Platform::parseXml(whole.str(), "again");
    if (!reread) {
        __builtin_trap();
    }
    readMidiInput(reread.value(), again);
    std::ostringstream twice;
    writeMidiInput(twice, 0, again);
    if (text.substr(0, twice.str().size()) != twice.str()) {
        __builtin_trap();
    }
    return 0;
}
