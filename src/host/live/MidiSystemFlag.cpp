#include "host/live/MidiSystemFlag.h"

#include <map>
#include <string>

namespace Host {

void addMidiSystemOption(CLI::App& verb, std::optional<MidiSystemKind>& kind) {
    static const std::map<std::string, MidiSystemKind> kinds{{"jack", MidiSystemKind::jack},
                                                             {"alsa", MidiSystemKind::alsa},
                                                             {"winmm", MidiSystemKind::winmm},
                                                             {"none", MidiSystemKind::none}};
    verb.add_option_function<std::string>(
            "--midi", [&kind](const std::string& name) { kind = kinds.at(name); },
            "Use this MIDI system; without it the first that answers")
        ->check(CLI::IsMember({"jack", "alsa", "winmm", "none"}))
        ->type_name("jack|alsa|winmm|none");
}

} // namespace Host
