#include "values/QelMidiMessage.h"

namespace Backend::MidiEngine {

namespace {

QelMidiMessage controllerMessage(std::int8_t controller, std::int8_t output, std::int8_t channel) noexcept {
    return {MessageType::controllerChange, controller, 0, channel, output, QelMidiMessage::DEFAULT_ZONE,
            QelMidiMessage::DEFAULT_INPUT, noTicks};
}

} // namespace

QelMidiMessage QelMidiMessage::createAllSoundOffCC(std::int8_t output, std::int8_t channel) noexcept {
    return controllerMessage(120, output, channel);
}

QelMidiMessage QelMidiMessage::createAllControllersOffCC(std::int8_t output, std::int8_t channel) noexcept {
    return controllerMessage(121, output, channel);
}

QelMidiMessage QelMidiMessage::createSystemReset(std::int8_t output) noexcept {
    return {MessageType::systemReset, 0, 0, 0, output, DEFAULT_ZONE, DEFAULT_INPUT, noTicks};
}

QelMidiMessage QelMidiMessage::createQelReset() noexcept {
    return QelMidiMessage(MidiEngineMessageType::softReset);
}

QelMidiMessage QelMidiMessage::createQelHardReset() noexcept {
    return QelMidiMessage(MidiEngineMessageType::hardReset);
}

bool QelMidiMessage::fitsParameters() const noexcept {
    constexpr std::uint32_t lastCell = 15;
    const bool isFromControl = static_cast<std::uint32_t>(fromControl_.x) <= lastCell &&
                               static_cast<std::uint32_t>(fromControl_.y) <= lastCell;
    return !isFromControl && !isTimedEvent() && hostTime_ < 0 && engineType_ == MidiEngineMessageType::event;
}

} // namespace Backend::MidiEngine
