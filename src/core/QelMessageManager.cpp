#include "core/QelMessageManager.h"

#include "core/Barrier.h"
#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "values/OnOffToggle.h"
#include "values/QelMidiMessage.h"
#include "values/Rect.h"
#include "values/RelativeFixedValue.h"
#include "values/ScreenState.h"
#include "values/SelectType.h"

#include <cassert>
#include <functional>
#include <utility>

namespace Backend {

using MidiEngine::QelMidiMessage;

// Their numbers are fixed. 450, 469, 470 and 505 are reserved: wanted, and ignored.
enum class QelMessageManager::Command : std::uint32_t {
    first = Platform::applicationMessage + 450,
    initialize,
    end,
    sendSetMidiInputPorts,
    postSetMidiInputPorts,
    sendSetMidiOutputPorts,
    postSetMidiOutputPorts,
    endInitialize,
    createQelGui,
    setLastWindowPosition,
    removeGuiWindowHandle,
    setDockToBottomEdge,
    setDefaultBank,
    setDisplayHeight,
    setDisplayNumbers,
    setLargeDisplayFont,
    setDisplayMidiInputEvents,
    setDisplayMidiOutputEvents,
    setAlwaysOnTop,
    loadProgram = Platform::applicationMessage + 471,
    loadBank,
    importVersion2Bank,
    importVersion2Program,
    importVersion2Preset,
    saveToCurrentBank,
    saveToBank,
    saveToProgram,
    playMidiCopied,
    playMidiPacked,
    enableMidiInput,
    enableMidiOutput,
    processMidiInputEventPacked,
    processMidiInputEventCopied,
    resetQel,
    changeBankSize,
    changeProgramName,
    addSequencePreset,
    changeProgram,
    changeDefaultMidiOutput,
    setScreenState,
    setUseSkinBorder,
    toggleSystemPanel,
    setRetroRecordBufferSize,
    enableRetroRecord,
    changeTempo,
    changeMidiThru,
    changeGlobalKeyboard,
    setTempoSource,
    setMouseSensitivity,
    processMidiInputEvents,
    call,
    barrier,
    setClickZoneChannelTranspose,
    last
};

namespace {

struct ImportRecord {
    std::string source;
    std::string destination;
    Platform::WindowHandle owner;
};

// What has no number of its own.
using Call = std::function<void(QelIF&)>;

[[nodiscard]] bool flag(std::uintptr_t parameter) {
    return parameter != 0;
}
[[nodiscard]] bool flag(std::intptr_t parameter) {
    return parameter != 0;
}
[[nodiscard]] int number(std::uintptr_t parameter) {
    return static_cast<int>(parameter);
}
[[nodiscard]] OnOffToggle toggle(std::uintptr_t parameter) {
    return OnOffToggle(static_cast<OnOffToggle::State>(parameter));
}
[[nodiscard]] std::uintptr_t asWParam(const OnOffToggle& how) {
    return static_cast<std::uintptr_t>(how.getState());
}

// The copy lives until the operation that it is handed to has returned.
[[nodiscard]] std::unique_ptr<std::string> text(std::uintptr_t parameter) {
    return takeCopy<std::string>(parameter);
}
[[nodiscard]] std::unique_ptr<std::string> text(std::intptr_t parameter) {
    return takeCopy<std::string>(parameter);
}

using ImportOperation = void (QelIF::*)(const std::string&, const std::string&, Platform::WindowHandle);
void import(QelIF& qel, ImportOperation operation, std::intptr_t parameter) {
    const auto record = takeCopy<ImportRecord>(parameter);
    (qel.*operation)(record->source, record->destination, record->owner);
}

} // namespace

QelMessageManager::QelMessageManager(QelIF& qel, MessageManagerMaster& master) : MessageManager(master), qel_(qel) {}

bool QelMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Command::first) && id <= static_cast<std::uint32_t>(Command::last);
}

// One line a command. [backend]
void QelMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    const std::intptr_t l = message.lParam;
    // clang-format off
    switch (static_cast<Command>(message.id)) {
    case Command::first:
    case Command::last: break;
    case Command::initialize: qel_.initialize(); return endSend();
    case Command::end: qel_.end(); return endSend();
    case Command::sendSetMidiInputPorts: qel_.setMidiInputPorts(*takeCopy<std::vector<MidiInputPort>>(w)); return endSend();
    case Command::postSetMidiInputPorts: return qel_.setMidiInputPorts(*takeCopy<std::vector<MidiInputPort>>(w));
    case Command::sendSetMidiOutputPorts: qel_.setMidiOutputPorts(*takeCopy<std::vector<MidiOutputPort>>(w)); return endSend();
    case Command::postSetMidiOutputPorts: return qel_.setMidiOutputPorts(*takeCopy<std::vector<MidiOutputPort>>(w));
    case Command::endInitialize: qel_.endInitialize(); return endSend();
    case Command::createQelGui: createdGui_ = qel_.createQelGui(flag(w)); return endSend();
    case Command::setLastWindowPosition: return qel_.setLastWindowPosition(*takeCopy<WindowsLib::Rect>(l));
    case Command::removeGuiWindowHandle: return qel_.removeGuiWindowHandle();
    case Command::setDockToBottomEdge: return qel_.setDockToBottomEdge(flag(w));
    case Command::setDefaultBank: return qel_.setDefaultBank(*text(l));
    case Command::setDisplayHeight: return qel_.setDisplayHeight(number(w));
    case Command::setDisplayNumbers: return qel_.setDisplayNumbers(flag(w));
    case Command::setLargeDisplayFont: return qel_.setLargeDisplayFont(flag(w));
    case Command::setDisplayMidiInputEvents: return qel_.setDisplayMidiInputEvents(flag(w));
    case Command::setDisplayMidiOutputEvents: return qel_.setDisplayMidiOutputEvents(flag(w));
    case Command::setAlwaysOnTop: return qel_.setAlwaysOnTop(flag(w));
    case Command::loadProgram: return qel_.loadProgram(*text(w));
    case Command::loadBank: return qel_.loadBank(*text(w));
    case Command::importVersion2Bank: return import(qel_, &QelIF::importVersion2Bank, l);
    case Command::importVersion2Program: return import(qel_, &QelIF::importVersion2Program, l);
    case Command::importVersion2Preset: return import(qel_, &QelIF::importVersion2Preset, l);
    case Command::saveToCurrentBank: return qel_.saveToCurrentBank(number(w), asWindowHandle(l));
    case Command::saveToBank: return qel_.saveToBank(*text(w), asWindowHandle(l));
    case Command::saveToProgram: return qel_.saveToProgram(*text(w), asWindowHandle(l));
    case Command::playMidiCopied: return qel_.playMidi(*takeCopy<QelMidiMessage>(w));
    case Command::playMidiPacked: return qel_.playMidi(QelMidiMessage(w, l));
    case Command::enableMidiInput: return qel_.enableMidiInput(number(w), flag(l));
    case Command::enableMidiOutput: return qel_.enableMidiOutput(number(w), flag(l));
    case Command::processMidiInputEventPacked: return qel_.processMidiInputEvent(QelMidiMessage(w, l));
    case Command::processMidiInputEventCopied: return qel_.processMidiInputEvent(*takeCopy<QelMidiMessage>(w));
    case Command::resetQel: return qel_.resetQel();
    case Command::changeBankSize: return qel_.changeBankSize(number(w), asWindowHandle(l));
    case Command::changeProgramName: return qel_.changeProgramName(*text(l));
    case Command::addSequencePreset: return qel_.addSequencePreset(*text(w), *text(l));
    case Command::changeProgram: return qel_.changeProgram(*takeCopy<SelectType>(w));
    case Command::changeDefaultMidiOutput: return qel_.changeDefaultMidiOutput(*takeCopy<SelectType>(w));
    case Command::setScreenState: return qel_.setScreenState(*takeCopy<ScreenState>(w));
    case Command::setUseSkinBorder: return qel_.setUseSkinBorder(flag(w));
    case Command::toggleSystemPanel: return qel_.toggleSystemPanel();
    case Command::setRetroRecordBufferSize: return qel_.setRetroRecordBufferSize(number(w));
    case Command::enableRetroRecord: return qel_.enableRetroRecord(flag(w));
    case Command::changeTempo: return qel_.changeTempo(*takeCopy<RelativeFixedValue>(w), flag(l));
    case Command::changeMidiThru: return qel_.changeMidiThru(toggle(w), flag(l));
    case Command::changeGlobalKeyboard: return qel_.changeGlobalKeyboard(toggle(w), flag(l));
    case Command::setTempoSource: return qel_.setTempoSource(static_cast<std::uint8_t>(w), flag(l));
    case Command::setMouseSensitivity: return qel_.setMouseSensitivity(number(w));
    case Command::processMidiInputEvents: return qel_.processMidiInputEvents(*takeCopy<std::vector<QelMidiMessage>>(w));
    case Command::call: return (*takeCopy<Call>(w))(qel_);
    case Command::barrier: return qel_.synchronize(*reinterpret_cast<Barrier*>(w));
    case Command::setClickZoneChannelTranspose: return qel_.setClickZoneChannelTranspose(flag(w));
    }
    // clang-format on
}

bool QelMessageManager::post(Command command, std::uintptr_t wParam, std::intptr_t lParam) {
    return MessageManager::post(static_cast<std::uint32_t>(command), wParam, lParam);
}

template <typename Value> bool QelMessageManager::postInWParam(Command command, Value&& value, std::intptr_t lParam) {
    return postCopy(std::forward<Value>(value), [&](std::uintptr_t copy) { return post(command, copy, lParam); });
}

template <typename Value> bool QelMessageManager::postInLParam(Command command, Value&& value) {
    return postCopy(std::forward<Value>(value),
                    [&](std::uintptr_t copy) { return post(command, 0, static_cast<std::intptr_t>(copy)); });
}

void QelMessageManager::postMidi(Command packed, Command copied, const QelMidiMessage& message) {
    if (message.fitsParameters()) {
        post(packed, message.getWparam(), message.getLparam());
    } else {
        postInWParam(copied, message);
    }
}

// Life.

void QelMessageManager::sendInitialize() {
    if (post(Command::initialize)) {
        awaitSend();
    }
}

void QelMessageManager::sendEndInitialize() {
    if (post(Command::endInitialize)) {
        awaitSend();
    }
}

void QelMessageManager::sendEnd() {
    if (post(Command::end)) {
        awaitSend();
    }
}

Gui::QelGuiIF* QelMessageManager::sendCreateQelGui(bool isPlugin) {
    createdGui_ = nullptr;
    if (post(Command::createQelGui, asWParam(isPlugin))) {
        awaitSend();
    }
    return createdGui_;
}

// Ports.

void QelMessageManager::sendSetMidiInputPorts(const std::vector<MidiInputPort>& ports) {
    if (postInWParam(Command::sendSetMidiInputPorts, ports)) {
        awaitSend();
    }
}

void QelMessageManager::postSetMidiInputPorts(const std::vector<MidiInputPort>& ports) {
    postInWParam(Command::postSetMidiInputPorts, ports);
}

void QelMessageManager::sendSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports) {
    if (postInWParam(Command::sendSetMidiOutputPorts, ports)) {
        awaitSend();
    }
}

void QelMessageManager::postSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports) {
    postInWParam(Command::postSetMidiOutputPorts, ports);
}

void QelMessageManager::postEnableMidiInput(int port, bool on) {
    post(Command::enableMidiInput, asWParam(port), asLParam(on));
}

void QelMessageManager::postEnableMidiOutput(int port, bool on) {
    post(Command::enableMidiOutput, asWParam(port), asLParam(on));
}

// Window and display preferences.

void QelMessageManager::postSetLastWindowPosition(const WindowsLib::Rect& rect) {
    postInLParam(Command::setLastWindowPosition, rect);
}

void QelMessageManager::postRemoveGuiWindowHandle() {
    post(Command::removeGuiWindowHandle);
}

void QelMessageManager::postSetDockToBottomEdge(bool on) {
    post(Command::setDockToBottomEdge, asWParam(on));
}

void QelMessageManager::postSetDefaultBank(const std::string& path) {
    postInLParam(Command::setDefaultBank, path);
}

void QelMessageManager::postSetDisplayHeight(int height) {
    post(Command::setDisplayHeight, asWParam(height));
}

void QelMessageManager::postSetDisplayNumbers(bool on) {
    post(Command::setDisplayNumbers, asWParam(on));
}

void QelMessageManager::postSetLargeDisplayFont(bool on) {
    post(Command::setLargeDisplayFont, asWParam(on));
}

void QelMessageManager::postSetDisplayMidiInputEvents(bool on) {
    post(Command::setDisplayMidiInputEvents, asWParam(on));
}

void QelMessageManager::postSetDisplayMidiOutputEvents(bool on) {
    post(Command::setDisplayMidiOutputEvents, asWParam(on));
}

void QelMessageManager::postSetAlwaysOnTop(bool on) {
    post(Command::setAlwaysOnTop, asWParam(on));
}

void QelMessageManager::postSetUseSkinBorder(bool on) {
    post(Command::setUseSkinBorder, asWParam(on));
}

void QelMessageManager::postSetScreenState(const ScreenState& state) {
    postInWParam(Command::setScreenState, state);
}

void QelMessageManager::postToggleSystemPanel() {
    post(Command::toggleSystemPanel);
}

void QelMessageManager::postSetMouseSensitivity(int sensitivity) {
    post(Command::setMouseSensitivity, asWParam(sensitivity));
}

void QelMessageManager::postSetClickZoneChannelTranspose(bool on) {
    post(Command::setClickZoneChannelTranspose, asWParam(on));
}

// Programs and banks.

void QelMessageManager::postLoadProgram(const std::string& path) {
    postInWParam(Command::loadProgram, path);
}

void QelMessageManager::postLoadBank(const std::string& path) {
    postInWParam(Command::loadBank, path);
}

void QelMessageManager::postImportVersion2Bank(const std::string& source, const std::string& destination,
                                               Platform::WindowHandle owner) {
    postInLParam(Command::importVersion2Bank, ImportRecord{source, destination, owner});
}

void QelMessageManager::postImportVersion2Program(const std::string& source, const std::string& destination,
                                                  Platform::WindowHandle owner) {
    postInLParam(Command::importVersion2Program, ImportRecord{source, destination, owner});
}

void QelMessageManager::postImportVersion2Preset(const std::string& source, const std::string& destination,
                                                 Platform::WindowHandle owner) {
    postInLParam(Command::importVersion2Preset, ImportRecord{source, destination, owner});
}

void QelMessageManager::postSaveToCurrentBank(int slot, Platform::WindowHandle owner) {
    post(Command::saveToCurrentBank, asWParam(slot), asLParam(owner));
}

void QelMessageManager::postSaveToBank(const std::string& path, Platform::WindowHandle owner) {
    postInWParam(Command::saveToBank, path, asLParam(owner));
}

void QelMessageManager::postSaveToProgram(const std::string& path, Platform::WindowHandle owner) {
    postInWParam(Command::saveToProgram, path, asLParam(owner));
}

void QelMessageManager::postChangeBankSize(int size, Platform::WindowHandle owner) {
    post(Command::changeBankSize, asWParam(size), asLParam(owner));
}

void QelMessageManager::postChangeProgramName(const std::string& name) {
    postInLParam(Command::changeProgramName, name);
}

void QelMessageManager::postAddSequencePreset(const std::string& name, const std::string& sequence) {
    postCopy(name, [&](std::uintptr_t nameCopy) {
        return postCopy(sequence, [&](std::uintptr_t sequenceCopy) {
            return post(Command::addSequencePreset, nameCopy, static_cast<std::intptr_t>(sequenceCopy));
        });
    });
}

void QelMessageManager::postChangeProgram(const SelectType& which) {
    postInWParam(Command::changeProgram, which);
}

// Playing.

void QelMessageManager::postPlayMidi(const QelMidiMessage& message) {
    postMidi(Command::playMidiPacked, Command::playMidiCopied, message);
}

void QelMessageManager::postProcessMidiInputEvent(const QelMidiMessage& message) {
    postMidi(Command::processMidiInputEventPacked, Command::processMidiInputEventCopied, message);
}

void QelMessageManager::postProcessMidiInputEvents(std::vector<QelMidiMessage> messages) {
    postInWParam(Command::processMidiInputEvents, std::move(messages));
}

void QelMessageManager::postResetQel() {
    post(Command::resetQel);
}

void QelMessageManager::postChangeDefaultMidiOutput(const SelectType& which) {
    postInWParam(Command::changeDefaultMidiOutput, which);
}

void QelMessageManager::postChangeTempo(const RelativeFixedValue& tempo, bool notify) {
    postInWParam(Command::changeTempo, tempo, asLParam(notify));
}

void QelMessageManager::postSetTempoSource(int source, bool notify) {
    post(Command::setTempoSource, asWParam(source), asLParam(notify));
}

void QelMessageManager::postChangeMidiThru(const OnOffToggle& how, bool notify) {
    post(Command::changeMidiThru, asWParam(how), asLParam(notify));
}

void QelMessageManager::postChangeGlobalKeyboard(const OnOffToggle& how, bool notify) {
    post(Command::changeGlobalKeyboard, asWParam(how), asLParam(notify));
}

// The retrospective record.

void QelMessageManager::postSetRetroRecordBufferSize(int size) {
    post(Command::setRetroRecordBufferSize, asWParam(size));
}

void QelMessageManager::postEnableRetroRecord(bool on) {
    post(Command::enableRetroRecord, asWParam(on));
}

// Functions and translations.

void QelMessageManager::postCall(Call call) {
    postInWParam(Command::call, std::move(call));
}

void QelMessageManager::postExecuteFunction(std::string xml) {
    postInWParam(Command::call, Call([xml = std::move(xml)](QelIF& qel) { qel.executeFunction(xml); }));
}

void QelMessageManager::postExecuteTranslation(std::string xml, const QelMidiMessage& incoming) {
    postInWParam(Command::call,
                 Call([xml = std::move(xml), incoming](QelIF& qel) { qel.executeTranslation(xml, incoming); }));
}

bool QelMessageManager::postBarrier(Barrier& barrier) {
    return post(Command::barrier, reinterpret_cast<std::uintptr_t>(&barrier));
}

void QelMessageManager::postPublishStatus() {
    postInWParam(Command::call, Call([](QelIF& qel) { qel.publishStatus(); }));
}

// The keyboard.

void QelMessageManager::postKeyDown(const Key& key, bool repeat) {
    qel_.keyDown(key, repeat);
}

void QelMessageManager::postKeyUp(const Key& key) {
    qel_.keyUp(key);
}

} // namespace Backend
