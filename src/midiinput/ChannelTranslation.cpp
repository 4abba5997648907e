#include "midiinput/ChannelTranslation.h"

#include "values/TextNumbers.h"

namespace Backend::MidiInput {

ChannelTranslation::ChannelTranslation(std::string_view text) noexcept {
    text = trimmed(text);
    if (text == "unchanged") {
        channel_ = UNCHANGED;
    } else if (!text.empty() && text != "default") {
        channel_ = readDecimal(text).value_or(0);
    }
}

std::string ChannelTranslation::toXmlString() const {
    return std::to_string(channel_);
}

} // namespace Backend::MidiInput
