// A backend facade that does nothing but write down what it was asked, one line a call.
#pragma once

#include "core/Barrier.h"
#include "core/QelIF.h"
#include "platform/Threads.h"
#include "values/Cell.h"
#include "values/JoyAxisElementId.h"
#include "values/JoyButtonElementId.h"
#include "values/Key.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/QelMidiMessage.h"
#include "values/Rect.h"
#include "values/RelativeFixedValue.h"
#include "values/ScreenState.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"

#include <concepts>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

// "type d1 d2 channel output zone input ppq cell host", the default channel as "*"; an engine command by its name.
inline std::string textOf(const Backend::MidiEngine::QelMidiMessage& message) {
    if (message.isQelReset() || message.isQelHardReset()) {
        return message.isQelReset() ? "soft reset" : "hard reset";
    }
    std::string text = std::to_string(static_cast<int>(message.getStatus()));
    for (const int each : {+message.getD1(), +message.getD2(), +message.getChannel()}) {
        text += " " + std::to_string(each);
    }
    text += message.isDefaultChannel() ? "*" : "";
    for (const int each : {+message.getOutput(), +message.getZone(), +message.getInput(), message.getPpq().count,
                           message.getFromControl().x, message.getFromControl().y}) {
        text += " " + std::to_string(each);
    }
    return text + " " + std::to_string(message.getHostTime());
}
inline std::string textOf(std::same_as<bool> auto value) {
    return value ? "true" : "false";
}
inline std::string textOf(std::same_as<int> auto value) {
    return std::to_string(value);
}
inline std::string textOf(const std::string& text) {
    return '"' + text + '"';
}
inline std::string textOf(const XmlItem& item) {
    return item.toXmlString();
}
inline std::string textOf(const Cell& cell) {
    return std::to_string(cell.x) + "," + std::to_string(cell.y);
}
inline std::string textOf(const JoyAxisElementId& id) {
    return std::to_string(id.joystick) + ":" + std::to_string(id.axis);
}
inline std::string textOf(const JoyButtonElementId& id) {
    return std::to_string(id.joystick) + ":" + std::to_string(id.button);
}
inline std::string textOf(const WindowsLib::Rect& rect) {
    return std::to_string(rect.left) + " " + std::to_string(rect.top) + " " + std::to_string(rect.right) + " " +
           std::to_string(rect.bottom);
}
// The panels that show.
inline std::string textOf(const ScreenState& state) {
    std::string text;
    for (const auto& [shows, name] : {std::pair{state.system, "system"},
                                      {state.help, "help"},
                                      {state.display, "display"},
                                      {state.oscillator, "oscillator"},
                                      {state.joystick, "joystick"},
                                      {state.computerInput, "computerInput"},
                                      {state.midiInput, "midiInput"},
                                      {state.output, "output"},
                                      {state.cc, "cc"},
                                      {state.layer, "layer"},
                                      {state.control, "control"},
                                      {state.zone, "zone"}}) {
        text += shows ? (text.empty() ? "" : " ") + std::string(name) : "";
    }
    return text;
}
inline std::string textOf(Platform::WindowHandle window) {
    return window == nullptr ? "no window" : "window " + std::to_string(reinterpret_cast<std::uintptr_t>(window));
}
inline std::string textOf(const Backend::MidiPort& port) {
    return port.name + (port.enabled ? "+" : "-");
}
inline std::string textOf(const Backend::Barrier&) {
    return "barrier";
}
template <typename Item> std::string textOf(const std::vector<Item>& items) {
    std::string text;
    for (const Item& item : items) {
        text += (text.empty() ? "" : "; ") + textOf(item);
    }
    return "[" + text + "]";
}

// Barriers are opened at once. The parts that others reach through the facade do not exist, but for those given.
class RecordingQel final : public Backend::QelIF {
public:
    using Text = const std::string&;
    using Relative = const RelativeFixedValue&;
    using Select = const SelectType&;
    using Window = Platform::WindowHandle;
    using OnOff = const OnOffToggle&;
    using Midi = const Backend::MidiEngine::QelMidiMessage&;

    // What was asked since the last call of this. [any]
    [[nodiscard]] std::vector<std::string> takeCalls() {
        const std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }
    // The thread of the latest call. [any]
    [[nodiscard]] Platform::ThreadId lastThread() {
        const std::lock_guard lock(mutex_);
        return lastThread_;
    }

    std::vector<Backend::MidiInputPort> inputPorts;
    std::vector<Backend::MidiOutputPort> outputPorts;
    Gui::QelGuiIF* createdGui = nullptr; // what createQelGui gives
    Platform::WindowHandle window = nullptr;
    std::function<void(Midi)> whenPlayed; // called with what was played

    // clang-format off
    void initialize() override { call("initialize"); }
    void endInitialize() override { call("endInitialize"); }
    void end() override { call("end"); }
    Platform::AutoResetEvent& getWaitEvent() override { return missing<Platform::AutoResetEvent>(); }
    Backend::MessageManagerMaster& getMessageManagerMaster() override { return missing<Backend::MessageManagerMaster>(); }
    Backend::QelMessageManager& getQelMessageManager() override { return missing<Backend::QelMessageManager>(); }
    Backend::MidiEngine::MidiEngine& getMidiEngine() override { return missing<Backend::MidiEngine::MidiEngine>(); }
    Backend::ComputerInput::ComputerInputMessageManager& getComputerInputMessageManager() override { return missing<Backend::ComputerInput::ComputerInputMessageManager>(); }
    Backend::Display::DisplayMessageManager& getDisplayMessageManager() override { return missing<Backend::Display::DisplayMessageManager>(); }
    Backend::Controls::ControlMessageManager& getControlMessageManager() override { return missing<Backend::Controls::ControlMessageManager>(); }
    Backend::Joystick::JoystickMessageManager& getJoystickMessageManager() override { return missing<Backend::Joystick::JoystickMessageManager>(); }
    Backend::Layers::LayerMessageManager& getLayerMessageManager() override { return missing<Backend::Layers::LayerMessageManager>(); }
    Backend::Oscillators::OscMessageManager& getOscMessageManager() override { return missing<Backend::Oscillators::OscMessageManager>(); }
    Backend::MidiInput::MidiInputMessageManager& getMidiInputMessageManager() override { return missing<Backend::MidiInput::MidiInputMessageManager>(); }
    Backend::Recording::RetroRecord& getRetroRecord() override { return missing<Backend::Recording::RetroRecord>(); }
    Gui::QelGuiIF* getGui() override { return createdGui; }
    Window getGuiWindowHandle() const override { return window; }
    const Backend::RegistrySettings& getRegistrySettings() const override { return missing<Backend::RegistrySettings>(); }
    void setLastWindowPosition(const WindowsLib::Rect& rect) override { call("setLastWindowPosition", rect); }
    void removeGuiWindowHandle() override { call("removeGuiWindowHandle"); }
    void setDockToBottomEdge(bool on) override { call("setDockToBottomEdge", on); }
    void setDefaultBank(Text path) override { call("setDefaultBank", path); }
    void setMouseSensitivity(int sensitivity) override { call("setMouseSensitivity", sensitivity); }
    void setMidiInputPorts(const std::vector<Backend::MidiInputPort>& ports) override { call("setMidiInputPorts", ports); }
    void setMidiOutputPorts(const std::vector<Backend::MidiOutputPort>& ports) override { call("setMidiOutputPorts", ports); }
    const std::vector<Backend::MidiInputPort>& getMidiInputPorts() const override { return inputPorts; }
    const std::vector<Backend::MidiOutputPort>& getMidiOutputPorts() const override { return outputPorts; }
    void enableMidiInput(int port, bool on) override { call("enableMidiInput", port, on); }
    void enableMidiOutput(int port, bool on) override { call("enableMidiOutput", port, on); }
    void processMidiInputEvent(Midi message) override { call("processMidiInputEvent", message); }
    std::shared_ptr<const Backend::MidiInput::MidiEventConfigurationMap> getMidiInputMap() const override { return {}; }
    void setMidiInputDisplay(Platform::ThreadId) override { call("setMidiInputDisplay"); }
    void loadProgram(Text path) override { call("loadProgram", path); }
    std::string getProgramText() override { return {}; }
    void setProgramText(Text text) override { call("setProgramText", text); }
    void loadBank(Text path) override { call("loadBank", path); }
    void importVersion2Bank(Text from, Text to, Window owner) override { call("importVersion2Bank", from, to, owner); }
    void importVersion2Program(Text from, Text to, Window owner) override { call("importVersion2Program", from, to, owner); }
    void importVersion2Preset(Text from, Text to, Window owner) override { call("importVersion2Preset", from, to, owner); }
    void saveToCurrentBank(int slot, Window owner) override { call("saveToCurrentBank", slot, owner); }
    void saveToBank(Text path, Window owner) override { call("saveToBank", path, owner); }
    void saveToProgram(Text path, Window owner) override { call("saveToProgram", path, owner); }
    void setClickZoneChannelTranspose(bool on) override { call("setClickZoneChannelTranspose", on); }
    void setAlwaysOnTop(bool on) override { call("setAlwaysOnTop", on); }
    void setUseSkinBorder(bool on) override { call("setUseSkinBorder", on); }
    void showSystemPanel(OnOff how) override { call("showSystemPanel", how); }
    void toggleSystemPanel() override { call("toggleSystemPanel"); }
    void setDisplayHeight(int height) override { call("setDisplayHeight", height); }
    void setDisplayNumbers(bool on) override { call("setDisplayNumbers", on); }
    void setLargeDisplayFont(bool on) override { call("setLargeDisplayFont", on); }
    void setDisplayMidiInputEvents(bool on) override { call("setDisplayMidiInputEvents", on); }
    void setDisplayMidiOutputEvents(bool on) override { call("setDisplayMidiOutputEvents", on); }
    void showHelp(OnOff how) override { call("showHelp", how); }
    void showComputerInput(OnOff how) override { call("showComputerInput", how); }
    void showControl(OnOff how) override { call("showControl", how); }
    void showMidiInput(OnOff how) override { call("showMidiInput", how); }
    void showDisplay(OnOff how) override { call("showDisplay", how); }
    void showOscillator(OnOff how) override { call("showOscillator", how); }
    void showJoystick(OnOff how) override { call("showJoystick", how); }
    void showOutput(OnOff how) override { call("showOutput", how); }
    void showCc(OnOff how) override { call("showCc", how); }
    void showLayer(OnOff how) override { call("showLayer", how); }
    void showZone(OnOff how) override { call("showZone", how); }
    void showProgramMenu() override { call("showProgramMenu"); }
    void showSaveDialog() override { call("showSaveDialog"); }
    void showDefaultMidiOutputMenu() override { call("showDefaultMidiOutputMenu"); }
    void moveWindow(Relative x, Relative y) override { call("moveWindow", x, y); }
    void playMidi(Midi message) override { call("playMidi", message); if (whenPlayed) { whenPlayed(message); } }
    void selectControl(const SelectControlType& which) override { call("selectControl", which); }
    void setWidgetFocus(const SelectControlType& which) override { call("setWidgetFocus", which); }
    void changeControl(const SelectControlType& which, Relative value) override { call("changeControl", which, value); }
    void sendControlData(const SelectControlType& which) override { call("sendControlData", which); }
    void setControlValue(const Cell& cell, int value) override { call("setControlValue", cell, value); }
    void updateControl(Midi message) override { call("updateControl", message); }
    void loadComputerInputPreset(Text name) override { call("loadComputerInputPreset", name); }
    void loadMidiInputPreset(Text name) override { call("loadMidiInputPreset", name); }
    void loadControlPreset(Text name) override { call("loadControlPreset", name); }
    void loadJoystickInputPreset(Text name) override { call("loadJoystickInputPreset", name); }
    void loadLayerPreset(Text name) override { call("loadLayerPreset", name); }
    void loadOscillatorPreset(Text name) override { call("loadOscillatorPreset", name); }
    void saveLayerPreset(Text name, const std::vector<int>&) override { call("saveLayerPreset", name); }
    void deleteLayerPreset(Text name) override { call("deleteLayerPreset", name); }
    void saveOscillatorPreset(Text name, const std::vector<OscId>&) override { call("saveOscillatorPreset", name); }
    void deleteOscillatorPreset(Text name) override { call("deleteOscillatorPreset", name); }
    void keyDown(const Key& key, bool repeat) override { call("keyDown", key, repeat); }
    void keyUp(const Key& key) override { call("keyUp", key); }
    void setLayers(const std::vector<Backend::Layers::Layer>&) override { call("setLayers"); }
    void setOscillators(const Backend::Oscillators::OscList&) override { call("setOscillators"); }
    const std::filesystem::path& getApplicationData() const override { return missing<std::filesystem::path>(); }
    void setZones(const Backend::Zones::ZoneMap&) override { call("setZones"); }
    void selectZone(Select which) override { call("selectZone", which); }
    void changeZoneTranspose(Select which, Relative semitones) override { call("changeZoneTranspose", which, semitones); }
    void dataSelectLayer(Select which) override { call("dataSelectLayer", which); }
    void editSelectLayer(Select which) override { call("editSelectLayer", which); }
    void changeLayerTranspose(Select which, Relative value) override { call("changeLayerTranspose", which, value); }
    void changeLayerVelocity(Select which, Relative value) override { call("changeLayerVelocity", which, value); }
    void changeLayerMute(Select which, OnOff how) override { call("changeLayerMute", which, how); }
    void changeLayerMono(Select which, OnOff how) override { call("changeLayerMono", which, how); }
    void changeLayerSolo(Select which, OnOff how) override { call("changeLayerSolo", which, how); }
    void changeLayerNoteToggle(Select which, const NoteToggle& mode) override { call("changeLayerNoteToggle", which, mode); }
    void dataSelectOsc(Select which) override { call("dataSelectOsc", which); }
    void changeOscPlaying(Select which, OnOff how) override { call("changeOscPlaying", which, how); }
    void changeOscSpeed(Select which, Relative value) override { call("changeOscSpeed", which, value); }
    void joystickAxisChanged(const JoyAxisElementId& axis, int value) override { call("joystickAxisChanged", axis, value); }
    void joystickButtonDown(const JoyButtonElementId& button, bool repeat) override { call("joystickButtonDown", button, repeat); }
    void joystickButtonUp(const JoyButtonElementId& button) override { call("joystickButtonUp", button); }
    void changeTempo(Relative tempo, bool notify) override { call("changeTempo", tempo, notify); }
    void setTempoSource(int source, bool notify) override { call("setTempoSource", source, notify); }
    void resetQel() override { call("resetQel"); }
    void changeBankSize(int size, Window owner) override { call("changeBankSize", size, owner); }
    void changeProgramName(Text name) override { call("changeProgramName", name); }
    void addSequencePreset(Text name, Text sequence) override { call("addSequencePreset", name, sequence); }
    void deleteSequencePreset(Text name) override { call("deleteSequencePreset", name); }
    void changeProgram(Select which) override { call("changeProgram", which); }
    void changeDefaultMidiOutput(Select which) override { call("changeDefaultMidiOutput", which); }
    void setScreenState(const ScreenState& state) override { call("setScreenState", state); }
    void setRetroRecordBufferSize(int size) override { call("setRetroRecordBufferSize", size); }
    void enableRetroRecord(bool on) override { call("enableRetroRecord", on); }
    void changeMidiThru(OnOff how, bool notify) override { call("changeMidiThru", how, notify); }
    void changeGlobalKeyboard(OnOff how, bool notify) override { call("changeGlobalKeyboard", how, notify); }
    void processMidiInputEvents(const std::vector<Backend::MidiEngine::QelMidiMessage>& messages) override { call("processMidiInputEvents", messages); }
    void executeFunction(Text xml) override { call("executeFunction", xml); }
    void executeTranslation(Text xml, Midi incoming) override { call("executeTranslation", xml, incoming); }
    void synchronize(Backend::Barrier& barrier) override { call("synchronize", barrier); barrier.open(); }
    void publishStatus() override { call("publishStatus"); }
    Backend::QelStatus getStatus() const override { return {}; }
    Gui::QelGuiIF* createQelGui(bool isPlugin) override { call("createQelGui", isPlugin); return createdGui; }
    // clang-format on

private:
    template <typename... Arguments> void call(const char* operation, const Arguments&... arguments) {
        std::string text;
        ((text += (text.empty() ? "" : ", ") + textOf(arguments)), ...);
        const std::lock_guard lock(mutex_);
        calls_.push_back(operation + ("(" + text + ")"));
        lastThread_ = Platform::currentThreadId();
    }
    template <typename Part> [[noreturn]] static Part& missing() {
        throw std::logic_error("the recording facade has no such part");
    }

    std::mutex mutex_;
    std::vector<std::string> calls_;
    Platform::ThreadId lastThread_ = 0;
};

} // namespace TestSupport
