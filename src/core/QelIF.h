// The backend facade: everything that the host, the user interface and the input sections may ask of the backend.
#pragma once

#include "core/QelStatus.h"
#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"
#include "platform/WindowMessages.h"
#include "values/MidiPort.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class Key;
class NoteToggle;
class OnOffToggle;
class RelativeFixedValue;
class SelectControlType;
class SelectType;
struct Cell;
struct JoyAxisElementId;
struct JoyButtonElementId;
struct OscId;
struct ScreenState;
namespace WindowsLib {
struct Rect;
}
namespace Gui {
class QelGuiIF;
}

namespace Backend {

class MessageManagerMaster;
class QelMessageManager;
class RegistrySettings;
class Barrier;
namespace ComputerInput {
class ComputerInputMessageManager;
}
namespace Controls {
class ControlMessageManager;
}
namespace Display {
class DisplayMessageManager;
}
namespace Joystick {
class JoystickMessageManager;
}
namespace Oscillators {
class OscList;
class OscMessageManager;
} // namespace Oscillators
namespace Layers {
class LayerMessageManager;
struct Layer;
} // namespace Layers
namespace Zones {
class ZoneMap;
}
namespace MidiEngine {
class MidiEngine;
class QelMidiMessage;
} // namespace MidiEngine
namespace MidiInput {
class MidiInputMessageManager;
struct MidiEventConfigurationMap;
} // namespace MidiInput
namespace Recording {
class RetroRecord;
}

// All operations run on the backend thread, called by the handlers of QelMessageManager, except where marked
// [any]. A selection ("up", "selected", a fixed index ...) is resolved here, against the current state.
class QelIF {
public:
    virtual ~QelIF() = default;

    // Life.
    virtual void initialize() = 0;
    virtual void endInitialize() = 0;
    virtual void end() = 0;

    // The parts that others reach through the facade.
    [[nodiscard]] virtual Platform::AutoResetEvent& getWaitEvent() = 0;                                     // [any]
    [[nodiscard]] virtual MessageManagerMaster& getMessageManagerMaster() = 0;                              // [any]
    [[nodiscard]] virtual QelMessageManager& getQelMessageManager() = 0;                                    // [any]
    [[nodiscard]] virtual MidiEngine::MidiEngine& getMidiEngine() = 0;                                      // [any]
    [[nodiscard]] virtual ComputerInput::ComputerInputMessageManager& getComputerInputMessageManager() = 0; // [any]
    [[nodiscard]] virtual Display::DisplayMessageManager& getDisplayMessageManager() = 0;                   // [any]
    [[nodiscard]] virtual Controls::ControlMessageManager& getControlMessageManager() = 0;                  // [any]
    [[nodiscard]] virtual Joystick::JoystickMessageManager& getJoystickMessageManager() = 0;                // [any]
    [[nodiscard]] virtual MidiInput::MidiInputMessageManager& getMidiInputMessageManager() = 0;             // [any]
    [[nodiscard]] virtual Oscillators::OscMessageManager& getOscMessageManager() = 0;                       // [any]
    [[nodiscard]] virtual Layers::LayerMessageManager& getLayerMessageManager() = 0;                        // [any]
    [[nodiscard]] virtual Recording::RetroRecord& getRetroRecord() = 0;                                     // [any]
    [[nodiscard]] virtual Gui::QelGuiIF* getGui() = 0;                           // null without a user interface
    [[nodiscard]] virtual Platform::WindowHandle getGuiWindowHandle() const = 0; // [any] null without a window
    [[nodiscard]] virtual const RegistrySettings& getRegistrySettings() const = 0;
    [[nodiscard]] virtual const std::filesystem::path&
    getApplicationData() const = 0; // [any] the folder of the user's files

    // Window and display preferences.
    virtual void setLastWindowPosition(const WindowsLib::Rect& rect) = 0;
    virtual void removeGuiWindowHandle() = 0;
    virtual void setDockToBottomEdge(bool on) = 0;
    virtual void setDefaultBank(const std::string& path) = 0;
    virtual void setMouseSensitivity(int sensitivity) = 0;

    // Ports. Both lists replace what was known; ports are matched by name.
    virtual void setMidiInputPorts(const std::vector<MidiInputPort>& ports) = 0;
    virtual void setMidiOutputPorts(const std::vector<MidiOutputPort>& ports) = 0;
    [[nodiscard]] virtual const std::vector<MidiInputPort>& getMidiInputPorts() const = 0;
    [[nodiscard]] virtual const std::vector<MidiOutputPort>& getMidiOutputPorts() const = 0;
    virtual void enableMidiInput(int port, bool on) = 0;
    virtual void enableMidiOutput(int port, bool on) = 0;
    virtual void processMidiInputEvent(const MidiEngine::QelMidiMessage& message) = 0;
    // What is configured for incoming messages now; it does not change any more. [any]
    [[nodiscard]] virtual std::shared_ptr<const MidiInput::MidiEventConfigurationMap> getMidiInputMap() const = 0;
    // The thread that shows incoming messages gets a copy of each (MidiInput::showIncomingMessage); 0: nobody. It takes
    // them until it has been replaced. [any]
    virtual void setMidiInputDisplay(Platform::ThreadId thread) = 0;

    // Programs, banks and presets. `owner` is told when the work is done; null tells nobody.
    virtual void loadProgram(const std::string& path) = 0;
    [[nodiscard]] virtual std::string getProgramText() = 0;
    virtual void setProgramText(const std::string& text) = 0;
    virtual void loadBank(const std::string& path) = 0;
    virtual void importVersion2Bank(const std::string& source, const std::string& destination,
                                    Platform::WindowHandle owner) = 0;
    virtual void importVersion2Program(const std::string& source, const std::string& destination,
                                       Platform::WindowHandle owner) = 0;
    virtual void importVersion2Preset(const std::string& source, const std::string& destination,
                                      Platform::WindowHandle owner) = 0;
    virtual void saveToCurrentBank(int slot, Platform::WindowHandle owner) = 0;
    virtual void saveToBank(const std::string& path, Platform::WindowHandle owner) = 0;
    virtual void saveToProgram(const std::string& path, Platform::WindowHandle owner) = 0;

    // More window and display preferences.
    virtual void setClickZoneChannelTranspose(bool on) = 0;
    virtual void setAlwaysOnTop(bool on) = 0;
    virtual void setUseSkinBorder(bool on) = 0;
    virtual void showSystemPanel(const OnOffToggle& how) = 0;
    virtual void toggleSystemPanel() = 0;
    virtual void setDisplayHeight(int height) = 0;
    virtual void setDisplayNumbers(bool on) = 0;
    virtual void setLargeDisplayFont(bool on) = 0;
    virtual void setDisplayMidiInputEvents(bool on) = 0;
    virtual void setDisplayMidiOutputEvents(bool on) = 0;

    // Panels, menus and dialogs of the user interface; without one they do nothing.
    virtual void showHelp(const OnOffToggle& how) = 0;
    virtual void showComputerInput(const OnOffToggle& how) = 0;
    virtual void showControl(const OnOffToggle& how) = 0;
    virtual void showMidiInput(const OnOffToggle& how) = 0;
    virtual void showDisplay(const OnOffToggle& how) = 0;
    virtual void showOscillator(const OnOffToggle& how) = 0;
    virtual void showJoystick(const OnOffToggle& how) = 0;
    virtual void showOutput(const OnOffToggle& how) = 0;
    virtual void showCc(const OnOffToggle& how) = 0;
    virtual void showLayer(const OnOffToggle& how) = 0;
    virtual void showZone(const OnOffToggle& how) = 0;
    virtual void showProgramMenu() = 0;
    virtual void showSaveDialog() = 0;
    virtual void showDefaultMidiOutputMenu() = 0;
    virtual void moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) = 0;

    // Playing: through zones and layers, on the clock's next slice. [any]
    virtual void playMidi(const MidiEngine::QelMidiMessage& message) = 0;

    // On-screen controls.
    virtual void selectControl(const SelectControlType& which) = 0;
    virtual void setWidgetFocus(const SelectControlType& which) = 0;
    virtual void changeControl(const SelectControlType& which, const RelativeFixedValue& value) = 0;
    virtual void sendControlData(const SelectControlType& which) = 0;
    virtual void setControlValue(const Cell& cell, int value) = 0;
    // A message that is no note has passed the engine: controls bound to it follow without sending it again.
    virtual void updateControl(const MidiEngine::QelMidiMessage& message) = 0;

    // Presets of single sections, by name.
    virtual void loadComputerInputPreset(const std::string& name) = 0;
    virtual void loadMidiInputPreset(const std::string& name) = 0;
    virtual void loadControlPreset(const std::string& name) = 0;
    virtual void loadJoystickInputPreset(const std::string& name) = 0;
    virtual void loadLayerPreset(const std::string& name) = 0;
    virtual void loadOscillatorPreset(const std::string& name) = 0;
    // For whoever cannot reach the sections' own managers. An empty selection saves all; what is chosen is saved so
    // that loading it leaves the rest as it is.
    virtual void saveLayerPreset(const std::string& name, const std::vector<int>& places) = 0;
    virtual void deleteLayerPreset(const std::string& name) = 0;
    virtual void saveOscillatorPreset(const std::string& name, const std::vector<OscId>& ids) = 0;
    virtual void deleteOscillatorPreset(const std::string& name) = 0;

    // The computer keyboard. Both only post on to the section's own messages. [any]
    virtual void keyDown(const Key& key, bool repeat) = 0;
    virtual void keyUp(const Key& key) = 0;

    // Zones, layers, oscillators. A whole list replaces what is there.
    virtual void setLayers(const std::vector<Layers::Layer>& layers) = 0;
    virtual void setOscillators(const Oscillators::OscList& oscillators) = 0;
    virtual void setZones(const Zones::ZoneMap& zones) = 0;
    virtual void selectZone(const SelectType& which) = 0;
    virtual void changeZoneTranspose(const SelectType& which, const RelativeFixedValue& semitones) = 0;
    virtual void dataSelectLayer(const SelectType& which) = 0;
    virtual void editSelectLayer(const SelectType& which) = 0;
    virtual void changeLayerTranspose(const SelectType& which, const RelativeFixedValue& value) = 0;
    virtual void changeLayerVelocity(const SelectType& which, const RelativeFixedValue& value) = 0;
    virtual void changeLayerMute(const SelectType& which, const OnOffToggle& how) = 0;
    virtual void changeLayerMono(const SelectType& which, const OnOffToggle& how) = 0;
    virtual void changeLayerSolo(const SelectType& which, const OnOffToggle& how) = 0;
    virtual void changeLayerNoteToggle(const SelectType& which, const NoteToggle& mode) = 0;
    virtual void dataSelectOsc(const SelectType& which) = 0;
    virtual void changeOscPlaying(const SelectType& which, const OnOffToggle& how) = 0;
    virtual void changeOscSpeed(const SelectType& which, const RelativeFixedValue& value) = 0;

    // Joysticks: raw position 0..65535 as it is to be scaled; buttons 0..31.
    virtual void joystickAxisChanged(const JoyAxisElementId& axis, int value) = 0;
    virtual void joystickButtonDown(const JoyButtonElementId& button, bool repeat) = 0;
    virtual void joystickButtonUp(const JoyButtonElementId& button) = 0;

    // Tempo in beats a minute, 10..500. `notify`: the user interface is told.
    virtual void changeTempo(const RelativeFixedValue& tempo, bool notify) = 0;
    // 0: internal; 1 + i: MIDI clock of input i.
    virtual void setTempoSource(int source, bool notify) = 0;

    // The soft reset: everything that sounds ends.
    virtual void resetQel() = 0;

    virtual void changeBankSize(int size, Platform::WindowHandle owner) = 0;
    virtual void changeProgramName(const std::string& name) = 0;
    // Stores a sequence, replacing one of that name; its text is its XML element or its steps alone.
    virtual void addSequencePreset(const std::string& name, const std::string& sequence) = 0;
    // Removes its file; layers that play it go on with the built-in one of that name, or as without a sequence.
    virtual void deleteSequencePreset(const std::string& name) = 0;
    virtual void changeProgram(const SelectType& which) = 0;
    virtual void changeDefaultMidiOutput(const SelectType& which) = 0;
    virtual void setScreenState(const ScreenState& state) = 0;

    // How many full buffer files are kept.
    virtual void setRetroRecordBufferSize(int size) = 0;
    virtual void enableRetroRecord(bool on) = 0;
    virtual void changeMidiThru(const OnOffToggle& how, bool notify) = 0;
    virtual void changeGlobalKeyboard(const OnOffToggle& how, bool notify) = 0;

    // Many incoming messages at once, in order; the same as processMidiInputEvent for each.
    virtual void processMidiInputEvents(const std::vector<MidiEngine::QelMidiMessage>& messages) = 0;

    // One function, or one translation for an incoming message, from its XML text.
    virtual void executeFunction(const std::string& xml) = 0;
    virtual void executeTranslation(const std::string& xml, const MidiEngine::QelMidiMessage& incoming) = 0;

    // Opens `barrier` once everything posted to the backend before, and all that came of it, has reached the
    // engine's pending queue.
    virtual void synchronize(Barrier& barrier) = 0;

    // Makes a copy of how things are now, for getStatus.
    virtual void publishStatus() = 0;
    [[nodiscard]] virtual QelStatus getStatus() const = 0; // [any] as of the latest publishStatus

    // Builds the user interface, or gives null where there is none. The backend owns it.
    virtual Gui::QelGuiIF* createQelGui(bool isPlugin) = 0;
};

} // namespace Backend
