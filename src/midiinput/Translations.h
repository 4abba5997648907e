// The names of the translations' classes.
#pragma once

#include "midiinput/TranslationOf.h"

namespace Backend::MidiInput::TranslationManagement::Translations {

template <std::size_t LINE> using Of = TranslationOf<LINE>;
using Actions::lineOfTranslation;

using DoNothing = Of<lineOfTranslation("DoNothing")>;
using Unchanged = Of<lineOfTranslation("Unchanged")>;
using ShowSystem = Of<lineOfTranslation("ShowSystem")>;
using ShowHelp = Of<lineOfTranslation("ShowHelp")>;
using ShowComputerInput = Of<lineOfTranslation("ShowComputerInput")>;
using ShowControl = Of<lineOfTranslation("ShowControl")>;
using ShowMidiInput = Of<lineOfTranslation("ShowMidiInput")>;
using ShowDisplay = Of<lineOfTranslation("ShowDisplay")>;
using ShowOscillator = Of<lineOfTranslation("ShowOscillator")>;
using ShowJoystickInput = Of<lineOfTranslation("ShowJoystickInput")>;
using ShowOutput = Of<lineOfTranslation("ShowOutput")>;
using ShowCc = Of<lineOfTranslation("ShowCc")>;
using ShowLayer = Of<lineOfTranslation("ShowLayer")>;
using ShowZone = Of<lineOfTranslation("ShowZone")>;
using MidiNoteOn = Of<lineOfTranslation("MidiNoteOn")>;
using MidiNoteOff = Of<lineOfTranslation("MidiNoteOff")>;
using MidiControllerChange = Of<lineOfTranslation("MidiControllerChange")>;
using MidiProgramChange = Of<lineOfTranslation("MidiProgramChange")>;
using MidiSongSelect = Of<lineOfTranslation("MidiSongSelect")>;
using MidiChannelPressure = Of<lineOfTranslation("MidiChannelPressure")>;
using MidiPitchBend = Of<lineOfTranslation("MidiPitchBend")>;
using MidiSongPosition = Of<lineOfTranslation("MidiSongPosition")>;
using MidiBusSelect = Of<lineOfTranslation("MidiBusSelect")>;
using MidiTuneRequest = Of<lineOfTranslation("MidiTuneRequest")>;
using MidiTimingTick = Of<lineOfTranslation("MidiTimingTick")>;
using MidiStartSong = Of<lineOfTranslation("MidiStartSong")>;
using MidiContinueSong = Of<lineOfTranslation("MidiContinueSong")>;
using MidiStopSong = Of<lineOfTranslation("MidiStopSong")>;
using MidiActiveSensing = Of<lineOfTranslation("MidiActiveSensing")>;
using MidiSystemReset = Of<lineOfTranslation("MidiSystemReset")>;
using MidiKeyPressure = Of<lineOfTranslation("MidiKeyPressure")>;
using MoveWindowTranslation = Of<lineOfTranslation("MoveWindowTranslation")>;
using LoadComputerInputPreset = Of<lineOfTranslation("LoadComputerInputPreset")>;
using LoadMidiInputPreset = Of<lineOfTranslation("LoadMidiInputPreset")>;
using LoadControlPreset = Of<lineOfTranslation("LoadControlPreset")>;
using LoadJoystickInputPreset = Of<lineOfTranslation("LoadJoystickInputPreset")>;
using LoadLayerPreset = Of<lineOfTranslation("LoadLayerPreset")>;
using LoadOscillatorPreset = Of<lineOfTranslation("LoadOscillatorPreset")>;
using SelectControl = Of<lineOfTranslation("SelectControl")>;
using SetWidgetFocus = Of<lineOfTranslation("SetWidgetFocus")>;
using ChangeControl = Of<lineOfTranslation("ChangeControl")>;
using SendControlData = Of<lineOfTranslation("SendControlData")>;
using ChangeProgram = Of<lineOfTranslation("ChangeProgram")>;
using ShowProgramMenu = Of<lineOfTranslation("ShowProgramMenu")>;
using ResetQel = Of<lineOfTranslation("ResetQel")>;
using ShowSaveDialog = Of<lineOfTranslation("ShowSaveDialog")>;
using SelectZone = Of<lineOfTranslation("SelectZone")>;
using ChangeZoneTranspose = Of<lineOfTranslation("ChangeZoneTranspose")>;
using ChangeDefaultMidiOutput = Of<lineOfTranslation("ChangeDefaultMidiOutput")>;
using ShowDefaultMidiOutMenu = Of<lineOfTranslation("ShowDefaultMidiOutMenu")>;
using ChangeTempo = Of<lineOfTranslation("ChangeTempo")>;
using ChangeMidiThru = Of<lineOfTranslation("ChangeMidiThru")>;
using ChangeGlobalKeyboard = Of<lineOfTranslation("ChangeGlobalKeyboard")>;
using DataSelectLayer = Of<lineOfTranslation("DataSelectLayer")>;
using EditSelectLayer = Of<lineOfTranslation("EditSelectLayer")>;
using ChangeLayerTranspose = Of<lineOfTranslation("ChangeLayerTranspose")>;
using ChangeLayerVelocity = Of<lineOfTranslation("ChangeLayerVelocity")>;
using ChangeLayerMute = Of<lineOfTranslation("ChangeLayerMute")>;
using ChangeLayerMono = Of<lineOfTranslation("ChangeLayerMono")>;
using ChangeLayerSolo = Of<lineOfTranslation("ChangeLayerSolo")>;
using ChangeLayerNoteToggle = Of<lineOfTranslation("ChangeLayerNoteToggle")>;
using DataSelectOscillator = Of<lineOfTranslation("DataSelectOscillator")>;
using ChangeOscPlaying = Of<lineOfTranslation("ChangeOscPlaying")>;
using ChangeOscSpeed = Of<lineOfTranslation("ChangeOscSpeed")>;

} // namespace Backend::MidiInput::TranslationManagement::Translations
