// All actions, one line each. A new line is a new function and a new translation, where it has a keyword for them.
#pragma once

#include "input/Action.h"
#include "values/OnOffToggle.h"

#include <array>
#include <cstddef>

namespace Backend::Actions {

// The main panel: its toggle is an operation of its own.
void showSystem(QelIF& qel, const OnOffToggle& how);

// Keywords differ between the families in some lines, deliberately: stored files use them. So do help ids: an id,
// once given, stays with its action.
// clang-format off
inline constexpr auto actions = std::to_array<Action>({
    {"NoFunction", "DoNothing", "None", 5450, NoOperation{}},
    // Sends what has arrived: its own status in place of none.
    {"", "Unchanged", "Unchanged", 5451, SendMidi{MidiEngine::MessageType::none}},

    {"ShowSystem", "ShowSystem", "Show Main Screen", 5297, &showSystem},
    {"ShowHelp", "ShowHelp", "Show Help", 5298, &QelIF::showHelp},
    {"ShowComputerInput", "ShowComputerInput", "Show Computer Input", 5274, &QelIF::showComputerInput},
    {"ShowControl", "ShowControl", "Show Controls", 5275, &QelIF::showControl},
    {"ShowMidiInput", "ShowMidiInput", "Show Midi Input", 5276, &QelIF::showMidiInput},
    {"ShowDisplay", "ShowDisplay", "Show Display", 5277, &QelIF::showDisplay},
    {"ShowOscillator", "ShowOscillator", "Show Oscillator", 5278, &QelIF::showOscillator},
    {"ShowJoystick", "ShowJoystickInput", "Show Joystick Input", 5279, &QelIF::showJoystick},
    {"ShowOutput", "ShowOutput", "Show Output", 5280, &QelIF::showOutput},
    {"ShowCC", "ShowCc", "Show CC", 5281, &QelIF::showCc},
    {"ShowLayer", "ShowLayer", "Show Layer", 5282, &QelIF::showLayer},
    {"ShowZone", "ShowZone", "Show Zone", 5283, &QelIF::showZone},

    {"MidiNoteOn", "MidiNoteOn", "Midi Note On", 5452, SendMidi{MidiEngine::MessageType::noteOn}},
    {"MidiNoteOff", "MidiNoteOff", "Midi Note Off", 5453, SendMidi{MidiEngine::MessageType::noteOff}},
    {"MidiControllerChange", "MidiControllerChange", "Midi Controller Change", 5454, SendMidi{MidiEngine::MessageType::controllerChange}},
    {"ProgramChange", "MidiProgramChange", "Midi Program Change", 5455, SendMidi{MidiEngine::MessageType::programChange}},
    {"MidiSongSelect", "MidiSongSelect", "Midi Song Select", 5456, SendMidi{MidiEngine::MessageType::songSelect}},
    {"MidiChannelPressure", "MidiChannelPressure", "Midi Channel Pressure", 5457, SendMidi{MidiEngine::MessageType::channelPressure}},
    {"MidiPitchBend", "MidiPitchBend", "Midi Pitch Bend", 5458, SendMidi{MidiEngine::MessageType::pitchBend}},
    {"MidiSongPosition", "MidiSongPosition", "Midi Song Position", 5459, SendMidi{MidiEngine::MessageType::songPosition}},
    {"MidiBusSelect", "MidiBusSelect", "Midi Bus Select", 5460, SendMidi{MidiEngine::MessageType::unofficialBusSelect}},
    {"MidiTuneRequest", "MidiTuneRequest", "Midi Tune Request", 5461, SendMidi{MidiEngine::MessageType::tuneRequest}},
    {"MidiEndOfSysEx", "", "", 5462, SendMidi{MidiEngine::MessageType::endOfSysex}},
    {"MidiTimingTick", "MidiTimingTick", "Midi Timing Tick", 5463, SendMidi{MidiEngine::MessageType::timingTick}},
    {"MidiStartSong", "MidiStartSong", "Midi Start Song", 5464, SendMidi{MidiEngine::MessageType::startSong}},
    {"MidiContinueSong", "MidiContinueSong", "Midi Continue Song", 5465, SendMidi{MidiEngine::MessageType::continueSong}},
    {"MidiStopSong", "MidiStopSong", "Midi Stop Song", 5466, SendMidi{MidiEngine::MessageType::stopSong}},
    {"MidiActiveSensing", "MidiActiveSensing", "Midi Active Sensing", 5467, SendMidi{MidiEngine::MessageType::activeSensing}},
    {"MidiSystemReset", "MidiSystemReset", "Midi System Reset", 5468, SendMidi{MidiEngine::MessageType::systemReset}},
    {"MidiKeyPressure", "MidiKeyPressure", "Midi Key Pressure", 5469, SendMidi{MidiEngine::MessageType::keyPressure}},

    {"MoveWindow", "MoveWindowTranslation", "Move Window", 5284, &QelIF::moveWindow},

    {"LoadComputerInputPreset", "LoadComputerInputPreset", "Load Computer Input Preset", 5285, &QelIF::loadComputerInputPreset},
    {"LoadMidiInputPreset", "LoadMidiInputPreset", "Load Midi Input Preset", 5286, &QelIF::loadMidiInputPreset},
    {"LoadControlPreset", "LoadControlPreset", "Load Control Preset", 5287, &QelIF::loadControlPreset},
    {"LoadJoystickInputPreset", "LoadJoystickInputPreset", "Load Joystick Input Preset", 5288, &QelIF::loadJoystickInputPreset},
    {"LoadLayerPreset", "LoadLayerPreset", "Load Layer Preset", 5289, &QelIF::loadLayerPreset},
    {"LoadOscillatorPreset", "LoadOscillatorPreset", "Load Oscillator Preset", 5290, &QelIF::loadOscillatorPreset},

    {"SelectControl", "SelectControl", "Select Control", 5291, &QelIF::selectControl},
    {"SetWidgetFocus", "SetWidgetFocus", "Set Control Focus", 5292, &QelIF::setWidgetFocus},
    {"ChangeControl", "ChangeControl", "Change Control", 5293, &QelIF::changeControl},
    {"SendControlData", "SendControlData", "Send Control Data", 5294, &QelIF::sendControlData},

    {"ChangeProgram", "ChangeProgram", "Change Program", 5295, &QelIF::changeProgram},
    {"ShowProgramMenu", "ShowProgramMenu", "Show Program Menu", 5296, &QelIF::showProgramMenu},
    {"ResetQel", "ResetQel", "Reset QEL", 5299, &QelIF::resetQel},
    {"ShowSaveDialog", "ShowSaveDialog", "Show Save Dialog", 5300, &QelIF::showSaveDialog},
    {"SelectZone", "SelectZone", "Select Zone", 5301, &QelIF::selectZone},
    {"ChangeZoneTranspose", "ChangeZoneTranspose", "Change Zone Transpose", 5302, &QelIF::changeZoneTranspose},
    {"ChangeDefaultMidiOutput", "ChangeDefaultMidiOutput", "Change Default Midi Output", 5303, &QelIF::changeDefaultMidiOutput},
    {"ShowDefaultMidiOutputMenu", "ShowDefaultMidiOutMenu", "Show Default Midi Output Menu", 5304, &QelIF::showDefaultMidiOutputMenu},
    {"ChangeTempo", "ChangeTempo", "Change Tempo", 5305, &QelIF::changeTempo},
    {"ChangeMidiThru", "ChangeMidiThru", "Change Midi Thru", 5306, &QelIF::changeMidiThru},
    {"ChangeGlobalKeyboard", "ChangeGlobalKeyboard", "Change Global Keyboard", 5307, &QelIF::changeGlobalKeyboard},

    {"DataSelectLayer", "DataSelectLayer", "Data Select Layer", 5308, &QelIF::dataSelectLayer},
    {"EditSelectLayer", "EditSelectLayer", "Edit Select Layer", 5309, &QelIF::editSelectLayer},
    {"ChangeLayerTranspose", "ChangeLayerTranspose", "Change Layer Transpose", 5310, &QelIF::changeLayerTranspose},
    {"ChangeLayerVelocity", "ChangeLayerVelocity", "Change Layer Velocity", 5311, &QelIF::changeLayerVelocity},
    {"ChangeLayerMute", "ChangeLayerMute", "Change Layer Mute", 5312, &QelIF::changeLayerMute},
    {"ChangeLayerMono", "ChangeLayerMono", "Change Layer Mono", 5313, &QelIF::changeLayerMono},
    {"ChangeLayerSolo", "ChangeLayerSolo", "Change Layer Solo", 5314, &QelIF::changeLayerSolo},
    {"ChangeLayerNoteToggle", "ChangeLayerNoteToggle", "Change Layer Note Toggle", 5315, &QelIF::changeLayerNoteToggle},

    {"DataSelectOsc", "DataSelectOscillator", "Data Select Oscillator", 5316, &QelIF::dataSelectOsc},
    {"ChangeOscPlaying", "ChangeOscPlaying", "Start/Stop Oscillator", 5317, &QelIF::changeOscPlaying},
    {"ChangeOscSpeed", "ChangeOscSpeed", "Change Oscillator Speed", 5318, &QelIF::changeOscSpeed},
});
// clang-format on

// The kind of call of a line.
template <std::size_t LINE> using CallOfLine = std::variant_alternative_t<actions[LINE].call.index(), Call>;

// The line of a function, of a translation. There is no such keyword: it does not compile.
consteval std::size_t lineOfFunction(std::string_view keyword) {
    std::size_t line = 0;
    while (actions.at(line).function != keyword) {
        ++line;
    }
    return line;
}
consteval std::size_t lineOfTranslation(std::string_view keyword) {
    std::size_t line = 0;
    while (actions.at(line).translation != keyword) {
        ++line;
    }
    return line;
}

} // namespace Backend::Actions
