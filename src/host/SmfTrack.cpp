#include "host/SmfTrack.h"

#include "host/SmfMeta.h"
#include "values/MessageType.h"
#include "values/VariableLength.h"

namespace Host {

SmfTrack::Found SmfTrack::next() noexcept {
    while (!ended_ && reason_ == nullptr) {
        std::uint32_t delta = 0;
        if (at_ == end_) {
            fail("the track ends without an end-of-track event");
            break;
        }
        if (!readNumber(delta)) {
            break;
        }
        time_ += delta;
        if (at_ == end_) {
            fail("the track ends within an event");
            break;
        }
        const std::uint8_t first = *at_;
        if (first < 0xF0) {
            if (readMessage()) {
                return Found::message;
            }
        } else if (first == 0xFF) {
            ++at_;
            if (readMeta() == Meta::tempo) {
                return Found::tempo;
            }
        } else if (first == 0xF0 || first == 0xF7) {
            ++at_;
            (void)skipBlock();
        } else {
            (void)skipSystemMessage();
        }
    }
    return ended_ ? Found::end : Found::fault;
}

bool SmfTrack::fail(const char* reason) noexcept {
    reason_ = reason;
    return false;
}

bool SmfTrack::readNumber(std::uint32_t& number) noexcept {
    switch (Backend::readVariableLength(at_, end_, number)) {
    case Backend::VariableLengthFound::cut:
        return fail("the track ends within a number");
    case Backend::VariableLengthFound::tooLong:
        return fail("a number is longer than four bytes");
    default:
        return true;
    }
}

SmfTrack::Meta SmfTrack::readMeta() noexcept {
    if (at_ == end_) {
        fail("the track ends within a meta event");
        return Meta::fault;
    }
    const std::uint8_t type = *at_++;
    const std::uint8_t* const lengthAt = at_;
    if (!skipBlock()) {
        return Meta::fault;
    }
    const auto blockEnd = at_;
    const auto wrongLength = [&](const char* reason) {
        at_ = lengthAt;
        fail(reason);
        return Meta::fault;
    };
    switch (type) {
    case SmfMeta::port:
        if (*lengthAt != 1) {
            return wrongLength("a port event has one byte");
        }
        port_ = blockEnd[-1];
        return Meta::passed;
    case SmfMeta::endOfTrack:
        ended_ = true;
        return Meta::end;
    case SmfMeta::tempo:
        if (*lengthAt != 3) {
            return wrongLength("a tempo event has three bytes");
        }
        microsecondsPerQuarter_ = static_cast<std::uint32_t>(blockEnd[-3]) << 16 |
                                  static_cast<std::uint32_t>(blockEnd[-2]) << 8 | blockEnd[-1];
        return Meta::tempo;
    default:
        return Meta::passed;
    }
}

bool SmfTrack::skipBlock() noexcept {
    const std::uint8_t* const lengthAt = at_;
    std::uint32_t length = 0;
    if (!readNumber(length)) {
        return false;
    }
    if (length > static_cast<std::size_t>(end_ - at_)) {
        at_ = lengthAt;
        return fail("a length reaches beyond the end of the track");
    }
    at_ += length;
    return true;
}

// The standard has no place for one. But files that hold what was played, our own takes among them, have MIDI clock and
// song positions as they were sent.
bool SmfTrack::skipSystemMessage() noexcept {
    using namespace Backend::MidiEngine;
    const auto type = static_cast<MessageType>(*at_);
    if (!isKnown(type)) {
        return fail("an undefined status");
    }
    ++at_;
    std::uint8_t passed = 0;
    for (int data = dataByteCount(type); data > 0; --data) {
        if (!readData(passed)) {
            return false;
        }
    }
    return true;
}

bool SmfTrack::readMessage() noexcept {
    if (*at_ >= 0x80) {
        status_ = *at_++;
    } else if (status_ == 0) {
        return fail("a data byte stands where a status must");
    }
    const std::uint8_t type = status_ & 0xF0;
    d2_ = 0;
    return readData(d1_) && (type == 0xC0 || type == 0xD0 || readData(d2_));
}

bool SmfTrack::readData(std::uint8_t& data) noexcept {
    if (at_ == end_) {
        return fail("the track ends within a message");
    }
    if (*at_ >= 0x80) {
        return fail("a status stands where a data byte must");
    }
    data = *at_++;
    return true;
}

} // namespace Host
