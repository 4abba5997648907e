#include "values/MidiMessage.h"

#include "values/ControllerNames.h"
#include "values/TextNumbers.h"

#include <array>
#include <ostream>

namespace Backend::MidiEngine {

MidiMessage::MidiMessage(std::string_view text) {
    const auto comma = text.find(',');
    type_ = messageTypeFromName(text.substr(0, comma));
    if (comma != std::string_view::npos) {
        d1_ = static_cast<std::int8_t>(readDecimal(text.substr(comma + 1)).value_or(0));
    }
}

MidiMessage::MidiMessage(const Note& note) noexcept {
    if (note.isSet()) {
        *this = note;
    }
}

MidiMessage& MidiMessage::operator=(const Note& note) noexcept {
    type_ = MessageType::noteOn;
    d1_ = note.getNumber();
    d2_ = 0;
    return *this;
}

int MidiMessage::writeBytes(std::ostream& out) const {
    const std::array<char, 3> bytes{static_cast<char>(getStatusWithChannel()), static_cast<char>(d1_),
                                    static_cast<char>(d2_)};
    const auto count = 1 + getMessageSize();
    out.write(bytes.data(), count);
    return count;
}

std::string MidiMessage::getEventNameWithCcAndNoteDetail() const {
    if (isNote()) {
        return "Note " + std::to_string(d1_) + " (" + Note(d1_).getName() + ")";
    }
    if (isControllerChange()) {
        return "Control Change " + std::to_string(d1_) + ": " + controllerName(d1_);
    }
    return getEventName();
}

std::string MidiMessage::toXmlString() const {
    return isNote() || isControllerChange() ? getEventName() + "," + std::to_string(d1_) : getEventName();
}

} // namespace Backend::MidiEngine
