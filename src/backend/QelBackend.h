// The object behind the facade: owns everything and forwards each operation to its section.
#pragma once

#include "backend/BankSection.h"
#include "backend/GuiSection.h"
#include "backend/GuiUpdates.h"
#include "backend/LayerMessageManager.h"
#include "backend/LayerSection.h"
#include "backend/MidiInputSection.h"
#include "backend/OscMessageManager.h"
#include "backend/OscillatorSection.h"
#include "backend/PortSection.h"
#include "backend/ProgramSection.h"
#include "backend/RecorderSection.h"
#include "backend/SequencePresetManager.h"
#include "backend/Version2Import.h"
#include "backend/ZoneSection.h"
#include "core/MessageManagerMaster.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "core/RegistrySettings.h"
#include "core/Surroundings.h"
#include "core/Trace.h"
#include "core/WorkerThread.h"
#include "gui/QelGuiIF.h"
#include "input/ComputerInputMessageManager.h"
#include "input/ComputerInputSection.h"
#include "input/ControlMessageManager.h"
#include "input/ControlSection.h"
#include "input/JoystickMessageManager.h"
#include "input/JoystickPoller.h"
#include "input/JoystickSection.h"
#include "midiengine/DisplayMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "midiinput/ConfigurationSection.h"
#include "midiinput/MidiInputMessageManager.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Backend {

// Members stand in the order in which they come into being; the sections use the engine and the settings.
class QelBackend final : public QelIF {
public:
    QelBackend(const std::string& name, MidiEngine::MidiPlayer& player, bool traceToFile,
               const Surroundings& surroundings);
    // After `end` and after the message thread was stopped.
    ~QelBackend() override;

    void initialize() override;
    void endInitialize() override;
    void end() override;

    Platform::AutoResetEvent& getWaitEvent() override { return master_.getWaitEvent(); }
    MessageManagerMaster& getMessageManagerMaster() override { return master_; }
    QelMessageManager& getQelMessageManager() override { return messageManager_; }
    MidiEngine::MidiEngine& getMidiEngine() override { return engine_; }
    ComputerInput::ComputerInputMessageManager& getComputerInputMessageManager() override { return keyManager_; }
    Display::DisplayMessageManager& getDisplayMessageManager() override { return display_; }
    Controls::ControlMessageManager& getControlMessageManager() override { return controlManager_; }
    Joystick::JoystickMessageManager& getJoystickMessageManager() override { return joystickManager_; }
    Oscillators::OscMessageManager& getOscMessageManager() override { return oscManager_; }
    Layers::LayerMessageManager& getLayerMessageManager() override { return layerManager_; }
    Recording::RetroRecord& getRetroRecord() override { return recorder_; }
    MidiInput::MidiInputMessageManager& getMidiInputMessageManager() override { return configurationManager_; }
    Gui::QelGuiIF* getGui() override { return gui_.gui(); }
    Platform::WindowHandle getGuiWindowHandle() const override { return gui_.window().handle(); }
    const RegistrySettings& getRegistrySettings() const override { return settings_; }
    const std::filesystem::path& getApplicationData() const override { return surroundings_.applicationData; }

    void setLastWindowPosition(const WindowsLib::Rect& rect) override { settings_.setLastWindowPosition(rect); }
    void removeGuiWindowHandle() override { gui_.window().forget(); }
    void setDockToBottomEdge(bool on) override { settings_.setDockToBottomEdge(on); }
    void setDefaultBank(const std::string& path) override { settings_.setDefaultBank(path); }
    void setMouseSensitivity(int sensitivity) override { settings_.setMouseSensitivity(sensitivity); }

    void setMidiInputPorts(const std::vector<MidiInputPort>& ports) override;
    void setMidiOutputPorts(const std::vector<MidiOutputPort>& ports) override { ports_.setOutputs(ports); }
    const std::vector<MidiInputPort>& getMidiInputPorts() const override { return ports_.inputs(); }
    const std::vector<MidiOutputPort>& getMidiOutputPorts() const override { return ports_.outputs(); }
    void enableMidiInput(int port, bool on) override { ports_.enableInput(port, on); }
    void enableMidiOutput(int port, bool on) override { ports_.enableOutput(port, on); }
    std::shared_ptr<const MidiInput::MidiEventConfigurationMap> getMidiInputMap() const override {
        return configurations_.map();
    }
    void setMidiInputDisplay(Platform::ThreadId thread) override { midiInput_.showTo(thread); }
    void processMidiInputEvent(const MidiEngine::QelMidiMessage& message) override;
    void processMidiInputEvents(const std::vector<MidiEngine::QelMidiMessage>& messages) override;

    void loadProgram(const std::string& path) override;
    std::string getProgramText() override { return programs_.text(); }
    void setProgramText(const std::string& text) override { programs_.setText(text); }
    void loadBank(const std::string& path) override;
    void importVersion2Bank(const std::string& source, const std::string& destination,
                            Platform::WindowHandle owner) override;
    void importVersion2Program(const std::string& source, const std::string& destination,
                               Platform::WindowHandle owner) override;
    void importVersion2Preset(const std::string& source, const std::string& destination,
                              Platform::WindowHandle owner) override;
    void saveToCurrentBank(int slot, Platform::WindowHandle owner) override { bank_.saveToCurrentBank(slot, owner); }
    void saveToBank(const std::string& path, Platform::WindowHandle owner) override;
    void saveToProgram(const std::string& path, Platform::WindowHandle owner) override;
    void changeBankSize(int size, Platform::WindowHandle) override { bank_.changeSize(size); }
    void changeProgramName(const std::string& name) override { programs_.rename(name); }
    void changeProgram(const SelectType& which) override { bank_.changeProgram(which); }
    void addSequencePreset(const std::string& name, const std::string& sequence) override;
    void deleteSequencePreset(const std::string& name) override;

    void setClickZoneChannelTranspose(bool on) override { settings_.setClickZoneChannelTranspose(on); }
    void setAlwaysOnTop(bool on) override { settings_.setAlwaysOnTop(on); }
    void setUseSkinBorder(bool on) override { settings_.setUseSkinBorder(on); }
    void setDisplayHeight(int height) override { settings_.setDisplayHeight(height); }
    void setDisplayNumbers(bool on) override { settings_.setDisplayNumbers(on); }
    void setLargeDisplayFont(bool on) override { settings_.setLargeDisplayFont(on); }
    void setDisplayMidiInputEvents(bool on) override { settings_.setDisplayMidiInputEvents(on); }
    void setDisplayMidiOutputEvents(bool on) override { settings_.setDisplayMidiOutputEvents(on); }
    void setScreenState(const ScreenState& state) override { gui_.show(state); }

    void showSystemPanel(const OnOffToggle& how) override { gui_.show(Gui::Panel::system, how); }
    void toggleSystemPanel() override { gui_.ask(&Gui::QelGuiIF::toggleSystemPanel); }
    void showHelp(const OnOffToggle& how) override { gui_.show(Gui::Panel::help, how); }
    void showComputerInput(const OnOffToggle& how) override { gui_.show(Gui::Panel::computerInput, how); }
    void showControl(const OnOffToggle& how) override { gui_.show(Gui::Panel::control, how); }
    void showMidiInput(const OnOffToggle& how) override { gui_.show(Gui::Panel::midiInput, how); }
    void showDisplay(const OnOffToggle& how) override { gui_.show(Gui::Panel::display, how); }
    void showOscillator(const OnOffToggle& how) override { gui_.show(Gui::Panel::oscillator, how); }
    void showJoystick(const OnOffToggle& how) override { gui_.show(Gui::Panel::joystick, how); }
    void showOutput(const OnOffToggle& how) override { gui_.show(Gui::Panel::output, how); }
    void showCc(const OnOffToggle& how) override { gui_.show(Gui::Panel::cc, how); }
    void showLayer(const OnOffToggle& how) override { gui_.show(Gui::Panel::layer, how); }
    void showZone(const OnOffToggle& how) override { gui_.show(Gui::Panel::zone, how); }
    void showProgramMenu() override { gui_.ask(&Gui::QelGuiIF::showProgramMenu); }
    void showSaveDialog() override { gui_.ask(&Gui::QelGuiIF::showSaveDialog); }
    void showDefaultMidiOutputMenu() override { gui_.ask(&Gui::QelGuiIF::showDefaultMidiOutputMenu); }
    void moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) override { gui_.moveWindow(x, y); }
    Gui::QelGuiIF* createQelGui(bool isPlugin) override { return gui_.create(isPlugin); }

    void playMidi(const MidiEngine::QelMidiMessage& message) override { engine_.postPlayMidi(message); }

    void selectControl(const SelectControlType& which) override { controls_.select(which); }
    void setWidgetFocus(const SelectControlType& which) override { controls_.setFocus(which); }
    void changeControl(const SelectControlType& which, const RelativeFixedValue& value) override {
        controls_.change(which, value);
    }
    void sendControlData(const SelectControlType& which) override { controls_.send(which); }
    void setControlValue(const Cell& cell, int value) override {
        controls_.setValue(cell, value, Controls::ControlSection::Tell::window);
    }
    void updateControl(const MidiEngine::QelMidiMessage& message) override { controls_.update(message); }

    void loadComputerInputPreset(const std::string& name) override { keys_.loadPreset(name); }
    void loadMidiInputPreset(const std::string& name) override { configurations_.loadPreset(name); }
    void loadControlPreset(const std::string& name) override { controls_.loadPreset(name); }
    void loadJoystickInputPreset(const std::string& name) override { joysticks_.loadPreset(name); }
    void loadLayerPreset(const std::string& name) override { layers_.loadPreset(name); }
    void loadOscillatorPreset(const std::string& name) override { oscillators_.loadPreset(name); }
    void saveLayerPreset(const std::string& name, const std::vector<int>& places) override {
        layers_.savePreset(name, places);
    }
    void deleteLayerPreset(const std::string& name) override { layers_.deletePreset(name); }
    void saveOscillatorPreset(const std::string& name, const std::vector<OscId>& ids) override {
        oscillators_.savePreset(name, ids);
    }
    void deleteOscillatorPreset(const std::string& name) override { oscillators_.deletePreset(name); }

    void keyDown(const Key& key, bool repeat) override { keyManager_.postKeyDown(key, repeat); }
    void keyUp(const Key& key) override { keyManager_.postKeyUp(key); }

    void setLayers(const Layers::LayerList& layers) override { layers_.replace(layers); }
    void setOscillators(const Oscillators::OscList& oscillators) override { oscillators_.edit(oscillators); }
    void setZones(const Zones::ZoneMap& zones) override { zones_.set(zones); }
    void selectZone(const SelectType& which) override { zones_.select(which); }
    void changeZoneTranspose(const SelectType& which, const RelativeFixedValue& semitones) override {
        zones_.changeTranspose(which, semitones);
    }
    void dataSelectLayer(const SelectType& which) override { layers_.selectForData(which); }
    void editSelectLayer(const SelectType& which) override { layers_.selectForEdit(which); }
    void changeLayerTranspose(const SelectType& which, const RelativeFixedValue& value) override {
        layers_.changeTranspose(which, value);
    }
    void changeLayerVelocity(const SelectType& which, const RelativeFixedValue& value) override {
        layers_.changeVelocity(which, value);
    }
    void changeLayerMute(const SelectType& which, const OnOffToggle& how) override { layers_.changeMute(which, how); }
    void changeLayerMono(const SelectType& which, const OnOffToggle& how) override { layers_.changeMono(which, how); }
    void changeLayerSolo(const SelectType& which, const OnOffToggle& how) override { layers_.changeSolo(which, how); }
    void changeLayerNoteToggle(const SelectType& which, const NoteToggle& mode) override {
        layers_.changeNoteToggle(which, mode);
    }
    void dataSelectOsc(const SelectType& which) override { oscillators_.select(which); }
    void changeOscPlaying(const SelectType& which, const OnOffToggle& how) override {
        oscillators_.changePlaying(which, how);
    }
    void changeOscSpeed(const SelectType& which, const RelativeFixedValue& value) override {
        oscillators_.changeSpeed(which, value);
    }

    void joystickAxisChanged(const JoyAxisElementId& axis, int value) override;
    void joystickButtonDown(const JoyButtonElementId& button, bool repeat) override;
    void joystickButtonUp(const JoyButtonElementId& button) override;

    void changeTempo(const RelativeFixedValue& tempo, bool) override { programs_.changeTempo(tempo); }
    void setTempoSource(int source, bool) override { programs_.setTempoSource(source); }
    void resetQel() override { engine_.sendReset(); }
    void changeDefaultMidiOutput(const SelectType& which) override { ports_.changeDefaultOutput(which); }
    void changeMidiThru(const OnOffToggle& how, bool notify) override;
    void changeGlobalKeyboard(const OnOffToggle& how, bool notify) override;

    void setRetroRecordBufferSize(int size) override { recorder_.setOlderFiles(size); }
    void enableRetroRecord(bool on) override { recorder_.enable(on); }

    void executeFunction(const std::string& xml) override;
    void executeTranslation(const std::string& xml, const MidiEngine::QelMidiMessage& incoming) override;
    void synchronize(Barrier& barrier) override { engine_.getMessageManager().postBarrier(barrier); }
    void publishStatus() override;
    QelStatus getStatus() const override;

private:
    // Says what could not be imported; true when the rest was.
    bool import(Version2Kind kind, const std::string& source, const std::string& destination);

    std::string name_;
    Trace trace_;
    Surroundings surroundings_;
    MessageManagerMaster master_;
    QelMessageManager messageManager_;
    RegistrySettings settings_;
    MidiEngine::MidiEngine engine_;

    RecorderSection recorder_{engine_, settings_, surroundings_};
    PortSection ports_;
    MidiInput::ConfigurationSection configurations_;
    MidiInput::MidiInputMessageManager configurationManager_;
    MidiInputSection midiInput_;
    SequenceManagement::SequencePresetManager sequences_;
    LayerSection layers_;
    Layers::LayerMessageManager layerManager_;
    ZoneSection zones_;
    OscillatorSection oscillators_;
    Oscillators::OscMessageManager oscManager_;
    ComputerInput::ComputerInputSection keys_;
    ComputerInput::ComputerInputMessageManager keyManager_;
    Controls::ControlSection controls_;
    Controls::ControlMessageManager controlManager_;
    Joystick::JoystickSection joysticks_;
    Joystick::JoystickMessageManager joystickManager_;
    ProgramSection programs_;
    BankSection bank_;

    Display::DisplayMessageManager display_;
    GuiSection gui_;
    GuiUpdates updates_;

    mutable std::mutex statusMutex_;
    QelStatus status_;

    // From initialize() to end().
    std::unique_ptr<WorkerThread> auxiliary_;
    std::unique_ptr<Joystick::JoystickPoller> poller_; // null: nobody looks for joysticks
};

} // namespace Backend
