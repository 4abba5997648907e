// The facade of the user interface: how the backend drives and informs it, and how its parts find each other.
#pragma once

#include "gui/GuiCopies.h"
#include "platform/WindowMessages.h"
#include "values/MidiPort.h"

#include <string>
#include <vector>

class RelativeFixedValue;
namespace WindowsLib {
struct Rect;
}
namespace Backend {
class GuiMessageManagerMaster;
class QelIF;
class QelMessageManager;
class RegistrySettings;
namespace MidiEngine {
class QelMidiMessage;
}
} // namespace Backend

namespace Gui {

class GdiManager;
class KeyboardHookProxy;
class MusicKeyboardCtl;
class OutputPanel;
class PopupMenu;
class PresetGuiOwner;
class Skinner;

// The order of the operations is fixed. `handle...Changed` are told after the change; they, `show...`, `toggle...`
// and what is marked [any] only post to the window and come back at once. What gives a reference, and what is not
// marked, is [gui].
class QelGuiIF {
public:
    virtual ~QelGuiIF() = default;

    virtual void initialize() = 0;
    virtual void end() = 0; // what is held is let go
    virtual void create(Platform::WindowHandle parent) = 0;
    virtual void destroy() = 0;

    [[nodiscard]] virtual GdiManager& getGdiManager() = 0;
    [[nodiscard]] virtual std::vector<Backend::MidiOutputPort>& getMidiOutputPorts() = 0;
    [[nodiscard]] virtual std::vector<Backend::MidiInputPort>& getMidiInputPorts() = 0;
    [[nodiscard]] virtual Skinner& getSkinner() = 0;
    [[nodiscard]] virtual PresetGuiOwner* getComputerInputPanelAsPresetGuiOwner() = 0;
    [[nodiscard]] virtual PresetGuiOwner* getControlPanelAsPresetGuiOwner() = 0;
    [[nodiscard]] virtual PresetGuiOwner* getLayerPanelAsPresetGuiOwner() = 0;
    [[nodiscard]] virtual OutputPanel& getOutputPanel() = 0;
    [[nodiscard]] virtual Platform::WindowHandle getWindowHandle() = 0;         // [any] null without a window
    [[nodiscard]] virtual Backend::RegistrySettings& getRegistrySettings() = 0; // a copy
    [[nodiscard]] virtual PopupMenu& getGmProgramMenu() = 0;
    [[nodiscard]] virtual PopupMenu& getDataMenu() = 0;
    virtual void setOutputButton(bool on) = 0; // [any]
    [[nodiscard]] virtual int getDefaultMidiOutput() const = 0;
    [[nodiscard]] virtual const BankInfo& getCurrentBank() const = 0;
    [[nodiscard]] virtual ProgramInfo& getCurrentProgram() = 0;
    [[nodiscard]] virtual const ProgramInfo& getCurrentProgram() const = 0;
    virtual void showSaveDialog() = 0;                                            // [any]
    virtual bool showLoadDialog() = 0;                                            // [any] false: there is no window
    virtual void showSetupDialog() = 0;                                           // [any]
    virtual void importVersion2File() = 0;                                        // [any]
    [[nodiscard]] virtual Backend::QelMessageManager& getQelMessageManager() = 0; // [any]

    virtual void handleDockToBottomEdgeChanged(bool on) = 0;
    virtual void handleDefaultBankChanged(const std::string& path) = 0;
    virtual void handleBankChanged(const BankInfo& bank) = 0;
    virtual void handleProgramChanged(const ProgramInfo& program) = 0;
    virtual void handleProgramNameChanged(const ProgramInfo& program) = 0;
    virtual void handleMidiInputPortsChanged(const std::vector<Backend::MidiInputPort>& ports) = 0;
    virtual void handleMidiOutputPortsChanged(const std::vector<Backend::MidiOutputPort>& ports) = 0;
    virtual void handleDefaultMidiOutputChanged(int output) = 0;
    virtual void handleAlwaysOnTopChanged(bool on) = 0;
    virtual void handleUseSkinBorderChanged(bool on) = 0;

    // Panels. Whether one shows is as of the window's latest change. [any]
    virtual void showSystemPanel(bool on) = 0;
    virtual void toggleSystemPanel() = 0;
    [[nodiscard]] virtual bool isSystemPanelShowing() const = 0;
    virtual void showHelp(bool on) = 0;
    virtual void toggleHelp() = 0;
    [[nodiscard]] virtual bool isHelpPanelShowing() const = 0;
    virtual void showDisplay(bool on) = 0;
    virtual void toggleDisplay() = 0;
    [[nodiscard]] virtual bool isDisplayPanelShowing() const = 0;
    [[nodiscard]] virtual PresetGuiOwner* getOscillatorPanelAsPresetGuiOwner() = 0;
    virtual void showOsc(bool on) = 0;
    virtual void toggleOsc() = 0;
    [[nodiscard]] virtual bool isOscPanelShowing() const = 0;
    [[nodiscard]] virtual PresetGuiOwner* getJoystickInputPanelAsPresetGuiOwner() = 0;
    virtual void showJoystick(bool on) = 0;
    virtual void toggleJoystick() = 0;
    [[nodiscard]] virtual bool isJoystickInputPanelShowing() const = 0;
    virtual void showComputerInput(bool on) = 0;
    virtual void toggleComputerInput() = 0;
    [[nodiscard]] virtual bool isComputerInputPanelShowing() const = 0;
    [[nodiscard]] virtual PresetGuiOwner* getMidiInputPanelAsPresetGuiOwner() = 0;
    virtual void showMidiInput(bool on) = 0;
    virtual void toggleMidiInput() = 0;
    [[nodiscard]] virtual bool isMidiInputPanelShowing() const = 0;
    virtual void showOutput(bool on) = 0;
    virtual void toggleOutput() = 0;
    [[nodiscard]] virtual bool isOutputPanelShowing() const = 0;
    virtual void showCc(bool on) = 0;
    virtual void toggleCc() = 0;
    [[nodiscard]] virtual bool isCcPanelShowing() const = 0;
    virtual void showLayer(bool on) = 0;
    virtual void toggleLayer() = 0;
    [[nodiscard]] virtual bool isLayerPanelShowing() const = 0;
    virtual void showControl(bool on) = 0;
    virtual void toggleControl() = 0;
    [[nodiscard]] virtual bool isControlPanelShowing() const = 0;
    virtual void showZone(bool on) = 0;
    virtual void toggleZone() = 0;
    [[nodiscard]] virtual bool isZonePanelShowing() const = 0;

    virtual void moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) = 0;       // [any]
    virtual void displayMidiOutputEvent(const Backend::MidiEngine::QelMidiMessage& message) = 0; // [any]
    [[nodiscard]] virtual bool getDockToBottomEdge() = 0;
    virtual void setDockToBottomEdge(bool on) = 0;
    [[nodiscard]] virtual Backend::GuiMessageManagerMaster& getGuiMessageManagerMaster() = 0;
    [[nodiscard]] virtual MusicKeyboardCtl& getMainMusicKeyboardCtl() = 0;
    virtual void clearMusicKeyboardHilight() = 0;                         // [any]
    virtual void clearComputerKeyboardHilight() = 0;                      // [any]
    [[nodiscard]] virtual std::string getMidiOutputName(char output) = 0; // its number, counted from 1, without a name
    virtual void handleResetQel() = 0;
    [[nodiscard]] virtual int getNumberOfPrograms() const = 0;
    [[nodiscard]] virtual SequencePresetList& getSequencePresetList() = 0;
    virtual void addSequencePreset(const std::string& name, const std::string& sequence) = 0;
    virtual void editSequencePreset(const std::string& name, const std::string& sequence) = 0;
    virtual void deleteSequencePreset(const std::string& name) = 0;
    [[nodiscard]] virtual const SequencePresetList& getSequencePresetList() const = 0;
    virtual void setFocus() = 0;                  // [any]
    virtual void showProgramMenu() = 0;           // [any]
    virtual void showDefaultMidiOutputMenu() = 0; // [any]
    virtual void handleRetroRecordBufferSizeChanged(int size) = 0;
    virtual void handleRetroRecordEnabledChanged(bool on) = 0;
    virtual void handleMidiThruChanged(bool on) = 0;
    virtual void handleGlobalKeyboardChanged(bool on) = 0;
    virtual void handleMouseSensitivityChanged(int sensitivity) = 0;
    virtual void handleLargeDisplayFontChanged(bool on) = 0;
    virtual void handleClickZoneChannelTransposeChanged(bool on) = 0;
    [[nodiscard]] virtual KeyboardHookProxy& getKeyboardHookProxy() = 0;
    [[nodiscard]] virtual Backend::QelIF& getQelIF() = 0; // [any]
    [[nodiscard]] virtual std::string getCurrentBankName() = 0;
    virtual void displayHelp(const std::string& text) = 0;       // [any]
    virtual void displayHelp(Platform::WindowHandle window) = 0; // [any] of that window
    virtual void displayHelp(int helpId) = 0;                    // [any]
    [[nodiscard]] virtual WindowsLib::Rect getMainWindowPosition() = 0;
    [[nodiscard]] virtual bool isVstPlugin() const = 0; // [any]
};

} // namespace Gui
