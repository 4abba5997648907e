// A MIDI message with its way through the program: port, zone, origin, time.
#pragma once

#include "values/Cell.h"
#include "values/MidiMessage.h"
#include "values/Ticks.h"

#include <cstdint>
#include <string>

namespace Backend::MidiEngine {

// What the engine is to do with a message: play it, or reset itself.
enum class MidiEngineMessageType : std::uint8_t { event = 0, softReset = 1, hardReset = 2 };

// Copied by value everywhere, millions of times a second: it owns no memory and fits into 48 bytes.
class QelMidiMessage final {
public:
    static constexpr std::int8_t DEFAULT_CHANNEL = -1;
    static constexpr std::int8_t DEFAULT_INPUT = -1;  // from no MIDI input
    static constexpr std::int8_t DEFAULT_OUTPUT = -1; // the engine's default output
    static constexpr std::int8_t DEFAULT_ZONE = -1;   // no zone

    QelMidiMessage() = default;
    // A negative channel is the default one; otherwise it is clamped to 0..15.
    QelMidiMessage(MessageType type, std::int8_t d1, std::int8_t d2, std::int8_t channel, std::int8_t output,
                   std::int8_t zone, std::int8_t input, Ticks ppq) noexcept
        : message_(type, d1, d2, channel), zone_(zone), output_(output), input_(input), defaultChannel_(channel < 0),
          ppq_(ppq) {}
    // From the two parameters of a thread message. Time, control and host time do not travel in them.
    QelMidiMessage(std::uint64_t wparam, std::int64_t lparam) noexcept
        : message_(wparam), zone_(byteOf(lparam, 24)), output_(byteOf(lparam, 0)), input_(byteOf(lparam, 16)),
          defaultChannel_(byteOf(lparam, 8) != 0) {}
    explicit QelMidiMessage(std::uint64_t wparam) noexcept : message_(wparam) {}
    // A negative channel is the default one; any other is taken as it is.
    QelMidiMessage(const MidiMessage& message, std::int8_t output, std::int8_t channel, std::int8_t zone,
                   const Cell& fromControl) noexcept
        : message_(message), zone_(zone), output_(output), fromControl_(fromControl) {
        setChannel(channel);
    }
    QelMidiMessage(const QelMidiMessage&) = default;
    QelMidiMessage& operator=(const QelMidiMessage&) = default;
    virtual ~QelMidiMessage() = default;

    // Controllers 120 and 121 with value 0; a negative channel is the default one.
    [[nodiscard]] static QelMidiMessage createAllSoundOffCC(std::int8_t output, std::int8_t channel) noexcept;
    [[nodiscard]] static QelMidiMessage createAllControllersOffCC(std::int8_t output, std::int8_t channel) noexcept;
    // On channel 0, not the default one.
    [[nodiscard]] static QelMidiMessage createSystemReset(std::int8_t output) noexcept;
    [[nodiscard]] static QelMidiMessage createQelReset() noexcept;
    [[nodiscard]] static QelMidiMessage createQelHardReset() noexcept;

    // The event itself, channel included; setting it leaves the default-channel flag as it is.
    [[nodiscard]] const MidiMessage& getMidiMessage() const noexcept { return message_; }
    void setMidiMessage(const MidiMessage& message) noexcept { message_ = message; }

    // The same as of the message inside.
    [[nodiscard]] bool isNote() const noexcept { return message_.isNote(); }
    [[nodiscard]] bool isNoteOn() const noexcept { return message_.isNoteOn(); }
    [[nodiscard]] bool isNoteOff() const noexcept { return message_.isNoteOff(); }
    [[nodiscard]] bool isControllerChange() const noexcept { return message_.isControllerChange(); }
    [[nodiscard]] bool isProgramChange() const noexcept { return message_.isProgramChange(); }
    [[nodiscard]] bool isChannelPressure() const noexcept { return message_.isChannelPressure(); }
    [[nodiscard]] bool isPitchBend() const noexcept { return message_.isPitchBend(); }
    [[nodiscard]] bool isSongSelect() const noexcept { return message_.isSongSelect(); }
    [[nodiscard]] bool isUnofficialBusSelect() const noexcept { return message_.isUnofficialBusSelect(); }
    [[nodiscard]] bool isTimingTick() const noexcept { return message_.isTimingTick(); }
    [[nodiscard]] bool hasParameters() const noexcept { return message_.hasParameters(); }
    [[nodiscard]] const std::string& getEventName() const { return message_.getEventName(); }
    [[nodiscard]] std::uint8_t getStatusWithChannel() const noexcept { return message_.getStatusWithChannel(); }
    [[nodiscard]] MessageType getStatus() const noexcept { return message_.getStatus(); }
    [[nodiscard]] MessageType getMessageType() const noexcept { return message_.getMessageType(); }
    void setStatus(MessageType type) noexcept { message_.setMessageType(type); }
    [[nodiscard]] std::int8_t getD1() const noexcept { return message_.getD1(); }
    void setD1(std::int8_t d1) noexcept { message_.setD1(d1); }
    [[nodiscard]] std::int8_t getD2() const noexcept { return message_.getD2(); }
    void setD2(std::int8_t d2) noexcept { message_.setD2(d2); }
    [[nodiscard]] std::int8_t getChannel() const noexcept { return message_.getChannel(); }
    void setToNoteOn() noexcept { message_.setToNoteOn(); }
    void setToNoteOff() noexcept { message_.setToNoteOff(); }
    [[nodiscard]] std::uint32_t getMidiOutShortMsg() const noexcept { return message_.getMidiOutShortMsg(); }

    // Negative: the default channel, kept as 0. Any other is taken as it is and is no longer the default one.
    void setChannel(std::int8_t channel) noexcept {
        defaultChannel_ = channel < 0;
        message_.setChannel(channel < 0 ? std::int8_t{0} : channel);
    }
    // The flag only: true while zone or layer choose the channel.
    void setDefaultChannel(bool on) noexcept { defaultChannel_ = on; }
    [[nodiscard]] bool isDefaultChannel() const noexcept { return defaultChannel_; }

    [[nodiscard]] std::int8_t getOutput() const noexcept { return output_; }
    void setOutput(std::int8_t output) noexcept { output_ = output; }
    [[nodiscard]] bool isDefaultOutput() const noexcept { return output_ == DEFAULT_OUTPUT; }
    [[nodiscard]] std::int8_t getZone() const noexcept { return zone_; }
    void setZone(std::int8_t zone) noexcept { zone_ = zone; }
    [[nodiscard]] std::int8_t getInput() const noexcept { return input_; }
    // The control that produced the event; (-1, -1): none.
    [[nodiscard]] Cell getFromControl() const noexcept { return fromControl_; }

    [[nodiscard]] bool isQelReset() const noexcept { return engineType_ == MidiEngineMessageType::softReset; }
    [[nodiscard]] bool isQelHardReset() const noexcept { return engineType_ == MidiEngineMessageType::hardReset; }

    // The tick at which it is to be played; negative: none.
    [[nodiscard]] Ticks getPpq() const noexcept { return ppq_; }
    void setPpq(Ticks ppq) noexcept { ppq_ = ppq; }
    [[nodiscard]] bool isTimedEvent() const noexcept { return ppq_.count >= 0; }

    // A time of the device, in its own unit, that the host finds again on all that is made of the message;
    // -1: none. Means nothing to anybody else.
    [[nodiscard]] std::int64_t getHostTime() const noexcept { return hostTime_; }
    void setHostTime(std::int64_t time) noexcept { hostTime_ = time; }

    // For a thread message; L's bytes from the lowest: output, default-channel flag, input, zone.
    [[nodiscard]] std::uint64_t getWparam() const noexcept { return message_.getWparam(); }
    [[nodiscard]] std::int64_t getLparam() const noexcept {
        return static_cast<std::int64_t>(static_cast<std::uint8_t>(output_)) |
               static_cast<std::int64_t>(defaultChannel_ ? 1 : 0) << 8 |
               static_cast<std::int64_t>(static_cast<std::uint8_t>(input_)) << 16 |
               static_cast<std::int64_t>(static_cast<std::uint8_t>(zone_)) << 24;
    }
    // True when these two say all of it: there is no control, no time, no host time and nothing for the engine to do.
    [[nodiscard]] bool fitsParameters() const noexcept;

private:
    explicit QelMidiMessage(MidiEngineMessageType type) noexcept : engineType_(type) {}

    [[nodiscard]] static std::int8_t byteOf(std::int64_t packed, int shift) noexcept {
        return static_cast<std::int8_t>(packed >> shift);
    }

    [[no_unique_address]] MidiMessage message_; // so that the small fields share its last word
    std::int8_t zone_ = DEFAULT_ZONE;
    std::int8_t output_ = DEFAULT_OUTPUT;
    std::int8_t input_ = DEFAULT_INPUT;
    bool defaultChannel_ = true;
    MidiEngineMessageType engineType_ = MidiEngineMessageType::event;
    Ticks ppq_ = noTicks;
    Cell fromControl_;
    std::int64_t hostTime_ = -1;
};

static_assert(sizeof(QelMidiMessage) == 48);

} // namespace Backend::MidiEngine
