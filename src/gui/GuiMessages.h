// What is posted to the main window, beside the messages of the input sections (ControlMessages.h and others).
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Gui {

// A "copy" is a heap copy that belongs to the window (Backend::takeCopy). Numbers that stand here are fixed.
enum class GuiMessage : std::uint32_t {
    // To the window that asked for it, once it is done:
    saved = Platform::applicationMessage + 114, // a program
    bankImported = Platform::applicationMessage + 123,
    programImported,
    presetImported,

    midiSent = Platform::applicationMessage + 0x1E6, // wParam, lParam: the packed message; also what was kept back
    midiReceived,                                    // the same of a message from an input, as it came in

    panel = Platform::applicationMessage + 1251, // wParam: the Panel; lParam: 0 hide, 1 show, 2 the other way
    program,                                     // wParam: copy of ProgramInfo
    bank,                                        // wParam: copy of BankInfo
    inputPorts,                                  // wParam: copy of vector<MidiInputPort>
    outputPorts,                                 // wParam: copy of vector<MidiOutputPort>
    setting,                                     // wParam: the ChangedSetting; lParam: its number
    defaultBank,                                 // wParam: copy of its path
    layers,                                      // wParam: copy of LayersInfo
    moveWindow,                                  // wParam: copy of WindowMove
    showSaveDialog,
    showLoadDialog,
    showSetupDialog,
    showProgramMenu,
    showDefaultOutputMenu,
    importFile,
    focus,
    reset,              // everything that sounded has ended
    clearMusicKeyboard, // nothing is lit any more
    clearComputerKeyboard,
    help,               // wParam: copy of a text
    helpId,             // wParam: the number of a help text
    fault,              // wParam: copy of a text: a file that could not be read or written
    sequencePresets,    // wParam: copy of SequencePresetList
    editSequencePreset, // wParam: copy of the preset's name
    presets,            // wParam: copy of PresetsInfo
    last,

    zones = Platform::applicationMessage + 0x89A, // lParam: copy of the ZoneMap
};

// What GuiMessage::setting tells of.
enum class ChangedSetting : std::uint32_t {
    tempo, // beats a minute
    tempoSource,
    defaultOutput, // index
    midiThru,
    globalKeyboard,
    retroRecordEnabled,
    retroRecordBufferSize,
    alwaysOnTop,
    useSkinBorder,
    dockToBottomEdge,
    mouseSensitivity,
    largeDisplayFont,
    clickZoneChannelTranspose,
    displayMidiInputEvents,
    displayMidiOutputEvents,
    displayNumbers,
    displayHeight,
    outputButton, // the button of the output panel
};

[[nodiscard]] constexpr std::uint32_t idOf(GuiMessage message) {
    return static_cast<std::uint32_t>(message);
}

} // namespace Gui
