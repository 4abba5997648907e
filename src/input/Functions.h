// The names of the functions' classes.
#pragma once

#include "input/FunctionOf.h"

namespace Backend::FunctionManagement::Functions {

template <std::size_t LINE> using Of = FunctionOf<LINE>;
using Actions::lineOfFunction;

using NoFunction = Of<lineOfFunction("NoFunction")>;
using ShowSystem = Of<lineOfFunction("ShowSystem")>;
using ShowHelp = Of<lineOfFunction("ShowHelp")>;
using ShowComputerInput = Of<lineOfFunction("ShowComputerInput")>;
using ShowControl = Of<lineOfFunction("ShowControl")>;
using ShowMidiInput = Of<lineOfFunction("ShowMidiInput")>;
using ShowDisplay = Of<lineOfFunction("ShowDisplay")>;
using ShowOscillator = Of<lineOfFunction("ShowOscillator")>;
using ShowJoystick = Of<lineOfFunction("ShowJoystick")>;
using ShowOutput = Of<lineOfFunction("ShowOutput")>;
using ShowCc = Of<lineOfFunction("ShowCC")>;
using ShowLayer = Of<lineOfFunction("ShowLayer")>;
using ShowZone = Of<lineOfFunction("ShowZone")>;
using MidiNoteOn = Of<lineOfFunction("MidiNoteOn")>;
using MidiNoteOff = Of<lineOfFunction("MidiNoteOff")>;
using MidiControllerChange = Of<lineOfFunction("MidiControllerChange")>;
using MidiProgramChange = Of<lineOfFunction("ProgramChange")>;
using MidiSongSelect = Of<lineOfFunction("MidiSongSelect")>;
using MidiChannelPressure = Of<lineOfFunction("MidiChannelPressure")>;
using MidiPitchBend = Of<lineOfFunction("MidiPitchBend")>;
using MidiSongPosition = Of<lineOfFunction("MidiSongPosition")>;
using MidiBusSelect = Of<lineOfFunction("MidiBusSelect")>;
using MidiTuneRequest = Of<lineOfFunction("MidiTuneRequest")>;
using MidiEndOfSysEx = Of<lineOfFunction("MidiEndOfSysEx")>;
using MidiTimingTick = Of<lineOfFunction("MidiTimingTick")>;
using MidiStartSong = Of<lineOfFunction("MidiStartSong")>;
using MidiContinueSong = Of<lineOfFunction("MidiContinueSong")>;
using MidiStopSong = Of<lineOfFunction("MidiStopSong")>;
using MidiActiveSensing = Of<lineOfFunction("MidiActiveSensing")>;
using MidiSystemReset = Of<lineOfFunction("MidiSystemReset")>;
using MidiKeyPressure = Of<lineOfFunction("MidiKeyPressure")>;
using MoveWindowFunction = Of<lineOfFunction("MoveWindow")>;
using LoadComputerInputPreset = Of<lineOfFunction("LoadComputerInputPreset")>;
using LoadMidiInputPreset = Of<lineOfFunction("LoadMidiInputPreset")>;
using LoadControlPreset = Of<lineOfFunction("LoadControlPreset")>;
using LoadJoystickInputPreset = Of<lineOfFunction("LoadJoystickInputPreset")>;
using LoadLayerPreset = Of<lineOfFunction("LoadLayerPreset")>;
using LoadOscillatorPreset = Of<lineOfFunction("LoadOscillatorPreset")>;
using SelectControl = Of<lineOfFunction("SelectControl")>;
using SetWidgetFocus = Of<lineOfFunction("SetWidgetFocus")>;
using ChangeControl = Of<lineOfFunction("ChangeControl")>;
using SendControlData = Of<lineOfFunction("SendControlData")>;
using ChangeProgram = Of<lineOfFunction("ChangeProgram")>;
using ShowProgramMenu = Of<lineOfFunction("ShowProgramMenu")>;
using ResetQel = Of<lineOfFunction("ResetQel")>;
using ShowSaveDialog = Of<lineOfFunction("ShowSaveDialog")>;
using SelectZone = Of<lineOfFunction("SelectZone")>;
using ChangeZoneTranspose = Of<lineOfFunction("ChangeZoneTranspose")>;
using ChangeDefaultMidiOutput = Of<lineOfFunction("ChangeDefaultMidiOutput")>;
using ShowDefaultMidiOutputMenu = Of<lineOfFunction("ShowDefaultMidiOutputMenu")>;
using ChangeTempo = Of<lineOfFunction("ChangeTempo")>;
using ChangeMidiThru = Of<lineOfFunction("ChangeMidiThru")>;
using ChangeGlobalKeyboard = Of<lineOfFunction("ChangeGlobalKeyboard")>;
using DataSelectLayer = Of<lineOfFunction("DataSelectLayer")>;
using EditSelectLayer = Of<lineOfFunction("EditSelectLayer")>;
using ChangeLayerTranspose = Of<lineOfFunction("ChangeLayerTranspose")>;
using ChangeLayerVelocity = Of<lineOfFunction("ChangeLayerVelocity")>;
using ChangeLayerMute = Of<lineOfFunction("ChangeLayerMute")>;
using ChangeLayerMono = Of<lineOfFunction("ChangeLayerMono")>;
using ChangeLayerSolo = Of<lineOfFunction("ChangeLayerSolo")>;
using ChangeLayerNoteToggle = Of<lineOfFunction("ChangeLayerNoteToggle")>;
using DataSelectOsc = Of<lineOfFunction("DataSelectOsc")>;
using ChangeOscPlaying = Of<lineOfFunction("ChangeOscPlaying")>;
using ChangeOscSpeed = Of<lineOfFunction("ChangeOscSpeed")>;

} // namespace Backend::FunctionManagement::Functions
