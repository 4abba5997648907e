// The backend's one door: every command of other threads becomes a message here and a call of QelIF on its thread.
#pragma once

#include "core/MessageManager.h"
#include "platform/WindowMessages.h"
#include "values/MidiPort.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class Key;
class OnOffToggle;
class RelativeFixedValue;
class SelectType;
struct ScreenState;
namespace Gui {
class QelGuiIF;
}
namespace WindowsLib {
struct Rect;
}

namespace Backend {

class Barrier;
class QelIF;
namespace MidiEngine {
class QelMidiMessage;
}

// A post comes back at once; a send when the backend has done it. Each runs the operation of QelIF that it is named
// after, in the order of the posts. Posting is for any thread but the backend's own (MessageManagerMaster::postMessage
// says why); sending is for one other thread at a time. Arguments are copied. Once the backend's thread has been
// stopped, all do nothing.
class QelMessageManager final : public MessageManager {
public:
    // Both outlive the manager.
    QelMessageManager(QelIF& qel, MessageManagerMaster& master);

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    // Life.
    void sendInitialize();
    void sendEndInitialize();
    void sendEnd();
    // Null when the backend creates no user interface.
    [[nodiscard]] Gui::QelGuiIF* sendCreateQelGui(bool isPlugin);

    // Ports.
    void sendSetMidiInputPorts(const std::vector<MidiInputPort>& ports);
    void postSetMidiInputPorts(const std::vector<MidiInputPort>& ports);
    void sendSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports);
    void postSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports);
    void postEnableMidiInput(int port, bool on);
    void postEnableMidiOutput(int port, bool on);

    // Window and display preferences.
    void postSetLastWindowPosition(const WindowsLib::Rect& rect);
    void postRemoveGuiWindowHandle();
    void postSetDockToBottomEdge(bool on);
    void postSetDefaultBank(const std::string& path);
    void postSetDisplayHeight(int height);
    void postSetDisplayNumbers(bool on);
    void postSetLargeDisplayFont(bool on);
    void postSetDisplayMidiInputEvents(bool on);
    void postSetDisplayMidiOutputEvents(bool on);
    void postSetAlwaysOnTop(bool on);
    void postSetUseSkinBorder(bool on);
    void postSetScreenState(const ScreenState& state);
    void postToggleSystemPanel();
    void postSetMouseSensitivity(int sensitivity);
    void postSetClickZoneChannelTranspose(bool on);

    // Programs and banks. `owner` is told when the work is done; null tells nobody.
    void postLoadProgram(const std::string& path);
    void postLoadBank(const std::string& path);
    void postImportVersion2Bank(const std::string& source, const std::string& destination,
                                Platform::WindowHandle owner);
    void postImportVersion2Program(const std::string& source, const std::string& destination,
                                   Platform::WindowHandle owner);
    void postImportVersion2Preset(const std::string& source, const std::string& destination,
                                  Platform::WindowHandle owner);
    void postSaveToCurrentBank(int slot, Platform::WindowHandle owner);
    void postSaveToBank(const std::string& path, Platform::WindowHandle owner);
    void postSaveToProgram(const std::string& path, Platform::WindowHandle owner);
    void postChangeBankSize(int size, Platform::WindowHandle owner);
    void postChangeProgramName(const std::string& name);
    void postAddSequencePreset(const std::string& name, const std::string& sequence);
    void postChangeProgram(const SelectType& which);

    // Playing. A message travels packed in the message's parameters where nothing of it is lost that way, else as a
    // copy: one from a control (row and column 0..15), with a time in ticks, with the host's time, or an engine
    // command.
    void postPlayMidi(const MidiEngine::QelMidiMessage& message);
    void postProcessMidiInputEvent(const MidiEngine::QelMidiMessage& message);
    // Many at once, handled without a gap between them.
    void postProcessMidiInputEvents(std::vector<MidiEngine::QelMidiMessage> messages);
    void postResetQel();
    void postChangeDefaultMidiOutput(const SelectType& which);
    void postChangeTempo(const RelativeFixedValue& tempo, bool notify);
    void postSetTempoSource(int source, bool notify); // 0..255
    void postChangeMidiThru(const OnOffToggle& how, bool notify);
    void postChangeGlobalKeyboard(const OnOffToggle& how, bool notify);

    // The retrospective record.
    void postSetRetroRecordBufferSize(int size);
    void postEnableRetroRecord(bool on);

    // Any operation of the backend, on its thread. What the call carries is copied or moved along.
    void postCall(std::function<void(QelIF&)> call);

    // One function, or one translation for an incoming message, from its XML text.
    void postExecuteFunction(std::string xml);
    void postExecuteTranslation(std::string xml, const MidiEngine::QelMidiMessage& incoming);

    // Opens the barrier once everything posted before has reached the engine's pending queue. The barrier lives until
    // it is open. False when the backend has stopped, and nobody will open it.
    [[nodiscard]] bool postBarrier(Barrier& barrier);

    // QelIF::getStatus then gives how things are after everything posted before.
    void postPublishStatus();

    // Call the backend on the calling thread: it posts the key on to the computer-input section itself. [gui]
    void postKeyDown(const Key& key, bool repeat);
    void postKeyUp(const Key& key);

private:
    enum class Command : std::uint32_t;

    // All say whether the message was accepted. A value goes as a heap copy in the parameter that is named.
    bool post(Command command, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    template <typename Value> bool postInWParam(Command command, Value&& value, std::intptr_t lParam = 0);
    template <typename Value> bool postInLParam(Command command, Value&& value);
    void postMidi(Command packed, Command copied, const MidiEngine::QelMidiMessage& message);

    QelIF& qel_;
    // Written by the handler of sendCreateQelGui before it lets the sender go on.
    Gui::QelGuiIF* createdGui_ = nullptr;
};

} // namespace Backend
