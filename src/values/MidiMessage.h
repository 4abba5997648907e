// A bare MIDI message: type, two data bytes, channel.
#pragma once

#include "values/MessageType.h"
#include "values/Note.h"
#include "values/XmlItem.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Backend::MidiEngine {

// Every constructor drops a channel that stands in the type (fixStatus). What a constructor is not given is 0.
class MidiMessage final : public XmlItem {
public:
    MidiMessage() = default;
    // The channel is clamped to 0..15.
    MidiMessage(MessageType type, std::int8_t d1, std::int8_t d2, std::int8_t channel) noexcept
        : type_(fixStatus(type)), d1_(d1), d2_(d2), channel_(clampChannel(channel)) {}
    MidiMessage(MessageType type, std::int8_t d1) noexcept : type_(fixStatus(type)), d1_(d1) {}
    explicit MidiMessage(MessageType type) noexcept : type_(fixStatus(type)) {}
    // The inverse of getWparam; bits 8..31 are D1, D2 and the channel, unclamped.
    explicit MidiMessage(std::uint64_t packed) noexcept
        : type_(fixStatus(static_cast<MessageType>(packed & 0xFF))), d1_(static_cast<std::int8_t>(packed >> 8)),
          d2_(static_cast<std::int8_t>(packed >> 16)), channel_(static_cast<std::int8_t>(packed >> 24)) {}
    // "Controller Change,7", "Pitch Bend": an event name, exactly, and D1. An unknown name gives the type none.
    explicit MidiMessage(std::string_view text);
    // A Note On with velocity 0; no note gives the message that is all zero.
    explicit MidiMessage(const Note& note) noexcept;
    // A Note On with velocity 0 on the channel that is set; unlike in the constructor the note is not looked at.
    MidiMessage& operator=(const Note& note) noexcept;

    [[nodiscard]] MessageType getMessageType() const noexcept { return type_; }
    [[nodiscard]] MessageType getStatus() const noexcept { return type_; }
    // Unlike the constructors it keeps a channel that stands in the type.
    void setMessageType(MessageType type) noexcept { type_ = type; }
    [[nodiscard]] std::uint8_t getStatusWithChannel() const noexcept {
        return static_cast<std::uint8_t>(static_cast<std::int32_t>(type_) | channel_);
    }
    [[nodiscard]] std::int8_t getD1() const noexcept { return d1_; }
    void setD1(std::int8_t d1) noexcept { d1_ = d1; }
    [[nodiscard]] std::int8_t getD2() const noexcept { return d2_; }
    void setD2(std::int8_t d2) noexcept { d2_ = d2; }
    [[nodiscard]] std::int8_t getChannel() const noexcept { return channel_; }
    void setChannel(std::int8_t channel) noexcept { channel_ = channel; }
    void setToNoteOn() noexcept { type_ = MessageType::noteOn; }
    void setToNoteOff() noexcept { type_ = MessageType::noteOff; }

    [[nodiscard]] bool isNote() const noexcept { return isNoteOn() || isNoteOff(); }
    // Whatever the velocity, 0 included.
    [[nodiscard]] bool isNoteOn() const noexcept { return type_ == MessageType::noteOn; }
    [[nodiscard]] bool isNoteOff() const noexcept { return type_ == MessageType::noteOff; }
    [[nodiscard]] bool isControllerChange() const noexcept { return type_ == MessageType::controllerChange; }
    [[nodiscard]] bool isProgramChange() const noexcept { return type_ == MessageType::programChange; }
    [[nodiscard]] bool isChannelPressure() const noexcept { return type_ == MessageType::channelPressure; }
    [[nodiscard]] bool isPitchBend() const noexcept { return type_ == MessageType::pitchBend; }
    [[nodiscard]] bool isSongPosition() const noexcept { return type_ == MessageType::songPosition; }
    [[nodiscard]] bool isSongSelect() const noexcept { return type_ == MessageType::songSelect; }
    [[nodiscard]] bool isUnofficialBusSelect() const noexcept { return type_ == MessageType::unofficialBusSelect; }
    [[nodiscard]] bool isTimingTick() const noexcept { return type_ == MessageType::timingTick; }
    [[nodiscard]] bool isSystemReset() const noexcept { return type_ == MessageType::systemReset; }
    [[nodiscard]] bool isBankMsb() const noexcept { return isControllerChange() && d1_ == 0; }
    [[nodiscard]] bool isBankLsb() const noexcept { return isControllerChange() && d1_ == 32; }
    [[nodiscard]] bool isAllSoundOff() const noexcept { return isControllerChange() && d1_ == 120; }
    [[nodiscard]] bool isValid() const noexcept { return isKnown(type_); }
    // SystemExclusive among them, the types without data not.
    [[nodiscard]] bool hasParameters() const noexcept { return dataByteCount(type_) > 0; }

    // Four bytes from the lowest: type, D1, D2, channel.
    [[nodiscard]] std::uint64_t getWparam() const noexcept {
        return (static_cast<std::uint64_t>(type_) & 0xFF) | byteAt(d1_, 8) | byteAt(d2_, 16) | byteAt(channel_, 24);
    }
    // Three bytes from the lowest: status with channel, D1, D2. A channel above 15 counts as 0. Song Position takes
    // no channel; other system messages do, deliberately: a channel other than 0 changes which message they are.
    [[nodiscard]] std::uint32_t getMidiOutShortMsg() const noexcept {
        const auto channel = isSongPosition() || (channel_ & ~0x0F) != 0 ? 0 : channel_;
        return static_cast<std::uint32_t>((static_cast<std::int32_t>(type_) | channel) & 0xFF) |
               static_cast<std::uint32_t>(byteAt(d1_, 8) | byteAt(d2_, 16));
    }
    // Data bytes: 0, 1 or 2.
    [[nodiscard]] int getMessageSize() const noexcept { return dataByteCount(type_); }
    // The status with the channel and the data bytes; gives the number of bytes written.
    int writeBytes(std::ostream& out) const;

    [[nodiscard]] const std::string& getEventName() const { return eventName(type_); }
    [[nodiscard]] static const std::string& getEventNameStatic(MessageType type) { return eventName(type); }
    // "Note 60 (C4)", "Control Change 7: Channel Volume", else the event name.
    [[nodiscard]] std::string getEventNameWithCcAndNoteDetail() const;
    // The event name, with "," and D1 for notes and controllers: what the constructor from text reads.
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const MidiMessage& a, const MidiMessage& b) noexcept {
        return a.type_ == b.type_ && a.d1_ == b.d1_ && a.d2_ == b.d2_ && a.channel_ == b.channel_;
    }
    // By type, then D1, as signed numbers; D2 and channel take no part.
    friend bool operator<(const MidiMessage& a, const MidiMessage& b) noexcept {
        return a.type_ != b.type_ ? a.type_ < b.type_ : a.d1_ < b.d1_;
    }
    friend bool operator>=(const MidiMessage& a, const MidiMessage& b) noexcept { return !(a < b); }
    // Deliberately not the reverse of >=: messages that differ in D2 or channel only are neither < nor <=.
    friend bool operator<=(const MidiMessage& a, const MidiMessage& b) noexcept { return a == b || a < b; }

private:
    [[nodiscard]] static std::int8_t clampChannel(std::int8_t channel) noexcept {
        return channel < 1 ? std::int8_t{0} : channel > 15 ? std::int8_t{15} : channel;
    }
    [[nodiscard]] static std::uint64_t byteAt(std::int8_t byte, int shift) noexcept {
        return static_cast<std::uint64_t>(static_cast<std::uint8_t>(byte)) << shift;
    }

    MessageType type_ = MessageType::none;
    std::int8_t d1_ = 0;
    std::int8_t d2_ = 0;
    std::int8_t channel_ = 0;
};

} // namespace Backend::MidiEngine
