#include "host/live/ClockSender.h"

#include "host/live/PortWishes.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Host {

using Backend::engineTimeOrigin;
using Backend::noTicks;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {
constexpr std::int32_t ticksPerClock = 20;
constexpr int largestPosition = 16383;
} // namespace

void ClockSender::lookAtPorts() {
    if (isSilent()) {
        return;
    }
    const std::vector<Backend::MidiOutputPort> ports = system_.outputs();
    std::array<std::uint64_t, maxOutputs / 64> bits{};
    for (std::size_t i = 0; i < std::min<std::size_t>(ports.size(), maxOutputs); ++i) {
        if (ports[i].enabled && isNamed(ports[i].name, parts_)) {
            bits[i / 64] |= std::uint64_t{1} << i % 64;
        }
    }
    for (std::size_t i = 0; i < bits.size(); ++i) {
        outputs_[i].store(bits[i], std::memory_order_relaxed);
    }
}

bool ClockSender::sendsTo(int output) const noexcept {
    return output >= 0 && output < maxOutputs &&
           (outputs_[output / 64].load(std::memory_order_relaxed) >> output % 64 & 1U) != 0;
}

bool ClockSender::displaces(const QelMidiMessage& message) const noexcept {
    switch (message.getStatus()) {
    case MessageType::timingTick:
    case MessageType::startSong:
    case MessageType::continueSong:
    case MessageType::stopSong:
    case MessageType::songPosition:
        return message.getInput() >= 0 && sendsTo(message.getOutput());
    default:
        return false;
    }
}

void ClockSender::tick(Ticks tick) noexcept {
    if (tick == last_) {
        return;
    }
    last_ = tick;
    if ((tick - engineTimeOrigin).count % ticksPerClock == 0) {
        sendToAll(MessageType::timingTick, tick);
    }
}

void ClockSender::transport(Transport transport, std::int32_t sixteenth) noexcept {
    switch (transport) {
    case Transport::start:
        return sendToAll(MessageType::startSong, noTicks);
    case Transport::goOn:
        sendToAll(MessageType::songPosition, noTicks, std::clamp(sixteenth, 0, largestPosition));
        return sendToAll(MessageType::continueSong, noTicks);
    case Transport::stop:
        return sendToAll(MessageType::stopSong, noTicks);
    }
}

void ClockSender::sendToAll(MessageType type, Ticks tick, int position) noexcept {
    QelMidiMessage message(type, static_cast<std::int8_t>(position & 0x7F), static_cast<std::int8_t>(position >> 7), 0,
                           0, QelMidiMessage::DEFAULT_ZONE, QelMidiMessage::DEFAULT_INPUT, tick);
    for (int output = 0; output < maxOutputs; ++output) {
        if (sendsTo(output)) {
            message.setOutput(static_cast<std::int8_t>(output));
            system_.send(message);
        }
    }
}

} // namespace Host
