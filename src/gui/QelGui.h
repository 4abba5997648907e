// The half of the facade that every user interface shares: what other threads ask becomes a post to the window.
#pragma once

#include "core/GuiMessageManagerMaster.h"
#include "core/RegistrySettings.h"
#include "gui/GuiCopies.h"
#include "gui/GuiMessages.h"
#include "gui/Panel.h"
#include "gui/QelGuiIF.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Gui {

// Made on the backend's thread, lives on the thread of the user interface. The window's endpoint is there from
// openWindow() until the object ends, so that no copy on its way is lost.
class QelGui : public QelGuiIF {
public:
    // `backend` outlives the object.
    QelGui(Backend::QelIF& backend, const Backend::RegistrySettings& settings,
           const std::vector<Backend::MidiInputPort>& inputs, const std::vector<Backend::MidiOutputPort>& outputs,
           const SequencePresetList& sequences);
    ~QelGui() override;
    QelGui(const QelGui&) = delete;
    QelGui& operator=(const QelGui&) = delete;

    // Copies; who learns of a change writes it here. [gui]
    std::vector<Backend::MidiOutputPort>& getMidiOutputPorts() final { return outputs_; }
    std::vector<Backend::MidiInputPort>& getMidiInputPorts() final { return inputs_; }
    Backend::RegistrySettings& getRegistrySettings() final { return settings_; }
    [[nodiscard]] int getDefaultMidiOutput() const final { return settings_.getDefaultMidiOutput(); }
    [[nodiscard]] const BankInfo& getCurrentBank() const final { return bank_; }
    void setCurrentBank(BankInfo bank) { bank_ = std::move(bank); }
    ProgramInfo& getCurrentProgram() final { return program_; }
    [[nodiscard]] const ProgramInfo& getCurrentProgram() const final { return program_; }
    std::string getMidiOutputName(char output) final;
    [[nodiscard]] int getNumberOfPrograms() const final { return static_cast<int>(bank_.programs.size()); }
    std::string getCurrentBankName() final;
    SequencePresetList& getSequencePresetList() final { return sequences_; }
    [[nodiscard]] const SequencePresetList& getSequencePresetList() const final { return sequences_; }
    bool getDockToBottomEdge() final { return settings_.getDockToBottomEdge(); }
    Backend::GuiMessageManagerMaster& getGuiMessageManagerMaster() final { return master_; }

    Platform::WindowHandle getWindowHandle() final { return window_.load(); }
    Backend::QelMessageManager& getQelMessageManager() final;
    Backend::QelIF& getQelIF() final { return backend_; }
    [[nodiscard]] bool isVstPlugin() const final { return false; }

    // Posts. [any]
    void setOutputButton(bool on) final { postSetting(ChangedSetting::outputButton, on ? 1 : 0); }
    void showSaveDialog() final { post(GuiMessage::showSaveDialog); }
    bool showLoadDialog() final { return post(GuiMessage::showLoadDialog); }
    void showSetupDialog() final { post(GuiMessage::showSetupDialog); }
    void importVersion2File() final { post(GuiMessage::importFile); }
    void moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) final;
    void displayMidiOutputEvent(const Backend::MidiEngine::QelMidiMessage& message) final;
    void clearMusicKeyboardHilight() final { post(GuiMessage::clearMusicKeyboard); }
    void clearComputerKeyboardHilight() final { post(GuiMessage::clearComputerKeyboard); }
    void setFocus() final { post(GuiMessage::focus); }
    void showProgramMenu() final { post(GuiMessage::showProgramMenu); }
    void showDefaultMidiOutputMenu() final { post(GuiMessage::showDefaultOutputMenu); }
    void displayHelp(const std::string& text) final;
    void displayHelp(Platform::WindowHandle) final {} // there is one window, which helps itself
    void displayHelp(int helpId) final { post(GuiMessage::helpId, static_cast<std::uintptr_t>(helpId)); }

    void handleDockToBottomEdgeChanged(bool on) final { postSetting(ChangedSetting::dockToBottomEdge, on); }
    void handleDefaultBankChanged(const std::string& path) final;
    void handleBankChanged(const BankInfo& bank) final;
    void handleProgramChanged(const ProgramInfo& program) final;
    void handleProgramNameChanged(const ProgramInfo& program) final { handleProgramChanged(program); }
    void handleMidiInputPortsChanged(const std::vector<Backend::MidiInputPort>& ports) final;
    void handleMidiOutputPortsChanged(const std::vector<Backend::MidiOutputPort>& ports) final;
    void handleDefaultMidiOutputChanged(int output) final { postSetting(ChangedSetting::defaultOutput, output); }
    void handleAlwaysOnTopChanged(bool on) final { postSetting(ChangedSetting::alwaysOnTop, on); }
    void handleUseSkinBorderChanged(bool on) final { postSetting(ChangedSetting::useSkinBorder, on); }
    void handleResetQel() final { post(GuiMessage::reset); }
    void handleRetroRecordBufferSizeChanged(int size) final {
        postSetting(ChangedSetting::retroRecordBufferSize, size);
    }
    void handleRetroRecordEnabledChanged(bool on) final { postSetting(ChangedSetting::retroRecordEnabled, on); }
    void handleMidiThruChanged(bool on) final { postSetting(ChangedSetting::midiThru, on); }
    void handleGlobalKeyboardChanged(bool on) final { postSetting(ChangedSetting::globalKeyboard, on); }
    void handleMouseSensitivityChanged(int value) final { postSetting(ChangedSetting::mouseSensitivity, value); }
    void handleLargeDisplayFontChanged(bool on) final { postSetting(ChangedSetting::largeDisplayFont, on); }
    void handleClickZoneChannelTransposeChanged(bool on) final {
        postSetting(ChangedSetting::clickZoneChannelTranspose, on);
    }

    void showSystemPanel(bool on) final { show(Panel::system, on); }
    void toggleSystemPanel() final { toggle(Panel::system); }
    [[nodiscard]] bool isSystemPanelShowing() const final { return isShowing(Panel::system); }
    void showHelp(bool on) final { show(Panel::help, on); }
    void toggleHelp() final { toggle(Panel::help); }
    [[nodiscard]] bool isHelpPanelShowing() const final { return isShowing(Panel::help); }
    void showDisplay(bool on) final { show(Panel::display, on); }
    void toggleDisplay() final { toggle(Panel::display); }
    [[nodiscard]] bool isDisplayPanelShowing() const final { return isShowing(Panel::display); }
    void showOsc(bool on) final { show(Panel::oscillator, on); }
    void toggleOsc() final { toggle(Panel::oscillator); }
    [[nodiscard]] bool isOscPanelShowing() const final { return isShowing(Panel::oscillator); }
    void showJoystick(bool on) final { show(Panel::joystick, on); }
    void toggleJoystick() final { toggle(Panel::joystick); }
    [[nodiscard]] bool isJoystickInputPanelShowing() const final { return isShowing(Panel::joystick); }
    void showComputerInput(bool on) final { show(Panel::computerInput, on); }
    void toggleComputerInput() final { toggle(Panel::computerInput); }
    [[nodiscard]] bool isComputerInputPanelShowing() const final { return isShowing(Panel::computerInput); }
    void showMidiInput(bool on) final { show(Panel::midiInput, on); }
    void toggleMidiInput() final { toggle(Panel::midiInput); }
    [[nodiscard]] bool isMidiInputPanelShowing() const final { return isShowing(Panel::midiInput); }
    void showOutput(bool on) final { show(Panel::output, on); }
    void toggleOutput() final { toggle(Panel::output); }
    [[nodiscard]] bool isOutputPanelShowing() const final { return isShowing(Panel::output); }
    void showCc(bool on) final { show(Panel::cc, on); }
    void toggleCc() final { toggle(Panel::cc); }
    [[nodiscard]] bool isCcPanelShowing() const final { return isShowing(Panel::cc); }
    void showLayer(bool on) final { show(Panel::layer, on); }
    void toggleLayer() final { toggle(Panel::layer); }
    [[nodiscard]] bool isLayerPanelShowing() const final { return isShowing(Panel::layer); }
    void showControl(bool on) final { show(Panel::control, on); }
    void toggleControl() final { toggle(Panel::control); }
    [[nodiscard]] bool isControlPanelShowing() const final { return isShowing(Panel::control); }
    void showZone(bool on) final { show(Panel::zone, on); }
    void toggleZone() final { toggle(Panel::zone); }
    [[nodiscard]] bool isZonePanelShowing() const final { return isShowing(Panel::zone); }

    [[nodiscard]] bool isShowing(Panel panel) const; // [any]

protected:
    // Makes the endpoint, whose messages go to getGuiMessageManagerMaster(). `wake` as in createWindowEndpoint. [gui]
    void openWindow(std::function<void()> wake);
    // Handles what has been posted, and lets nothing more come. [gui]
    void closeWindow();
    void noteShowing(Panel panel, bool on); // [gui]

private:
    bool post(GuiMessage message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    template <typename Value> void postValue(GuiMessage message, const Value& value);
    void postSetting(ChangedSetting setting, int value);
    void show(Panel panel, bool on) { post(GuiMessage::panel, static_cast<std::uintptr_t>(panel), on ? 1 : 0); }
    void toggle(Panel panel) { post(GuiMessage::panel, static_cast<std::uintptr_t>(panel), 2); }

    Backend::QelIF& backend_;
    Backend::RegistrySettings settings_;
    std::vector<Backend::MidiInputPort> inputs_;
    std::vector<Backend::MidiOutputPort> outputs_;
    SequencePresetList sequences_;
    BankInfo bank_;
    ProgramInfo program_;
    Backend::GuiMessageManagerMaster master_;
    std::atomic<Platform::WindowHandle> window_ = nullptr;
    std::atomic<std::uint32_t> showing_ = 0; // a bit for each panel
};

} // namespace Gui
