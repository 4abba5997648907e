#include "host/EventPoster.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "input/ControlMessageManager.h"
#include "input/JoystickMessageManager.h"
#include "input/JoystickWatcher.h"
#include "values/Key.h"
#include "values/RelativeFixedValue.h"

#include <string_view>

namespace Host {

using Backend::QelMessageManager;
using Backend::Ticks;
using Backend::Joystick::JoystickWatcher;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

class Poster final {
public:
    Poster(Backend::QelIF& qel, Ticks time) : qel_(qel), backend_(qel.getQelMessageManager()), time_(time) {}

    void operator()(const MidiArrives& midi) {
        if (!isSysEx(midi)) {
            backend_.postProcessMidiInputEvent(incomingMessage(midi, time_));
        }
    }
    void operator()(const KeyMoves& moves) {
        const Key key{std::string_view(moves.name)};
        if (moves.press == Press::up) {
            backend_.postKeyUp(key);
        } else {
            backend_.postKeyDown(key, moves.press == Press::repeat);
        }
    }
    void operator()(const ControlMoves& moves) { qel_.getControlMessageManager().postMove(moves.cell, moves.value); }
    void operator()(const AxisMoves& moves) {
        qel_.getJoystickMessageManager().axisChanged({moves.joystick, moves.axis},
                                                     JoystickWatcher::axisValue(moves.axis, moves.raw));
    }
    void operator()(const ButtonMoves& moves) {
        const JoyButtonElementId button{moves.joystick, moves.button};
        if (moves.press == Press::up) {
            qel_.getJoystickMessageManager().buttonUp(button);
        } else {
            qel_.getJoystickMessageManager().buttonDown(button, moves.press == Press::repeat);
        }
    }
    void operator()(const ExecuteFunction& function) { backend_.postExecuteFunction(function.xml); }
    void operator()(const ExecuteTranslation& translation) {
        backend_.postExecuteTranslation(translation.xml, incomingMessage(translation.incoming, time_));
    }
    void operator()(const SetTempo& tempo) {
        backend_.postChangeTempo(RelativeFixedValue::fixed(tempo.beatsPerMinute), true);
    }
    void operator()(const ResetAll&) { backend_.postResetQel(); }
    void operator()(const EndOfPerformance&) {}

private:
    Backend::QelIF& qel_;
    QelMessageManager& backend_;
    Ticks time_;
};

} // namespace

bool isSysEx(const MidiArrives& midi) noexcept {
    return midi.status == static_cast<int>(MessageType::systemExclusive);
}

QelMidiMessage incomingMessage(const MidiArrives& midi, Ticks time) {
    const auto channel = static_cast<std::int8_t>(midi.status < 0xF0 ? midi.status & 0x0F : 0);
    return {static_cast<MessageType>(midi.status), static_cast<std::int8_t>(midi.d1),
            static_cast<std::int8_t>(midi.d2),     channel,
            QelMidiMessage::DEFAULT_OUTPUT,        QelMidiMessage::DEFAULT_ZONE,
            static_cast<std::int8_t>(midi.port),   time};
}

void postEvent(const PerformanceEvent& event, Backend::QelIF& qel, Ticks time) {
    std::visit(Poster(qel, time), event.what);
}

} // namespace Host
