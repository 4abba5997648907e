#include "host/live/StatusText.h"

#include "platform/Utf8.h"

namespace Host {

namespace {

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text.empty() ? "none" : text;
}

std::string withSign(int number) {
    return (number > 0 ? "+" : "") + std::to_string(number);
}

std::string more(int count) {
    return count > 1 ? " (" + std::to_string(count) + " selected)" : "";
}

std::string zoneText(const std::optional<Backend::QelStatus::SelectedZone>& zone) {
    return zone ? "zone " + std::to_string(zone->id) + " " + withSign(zone->transpose) + more(zone->count) : "no zone";
}

// Whole, or to a tenth.
std::string tempoText(const StatusContent& content) {
    const int tenths = (content.tempo.thousandths + 50) / 100;
    const std::string fraction = tenths % 10 == 0 ? "" : "." + std::to_string(tenths % 10);
    return std::to_string(tenths / 10) + fraction + " BPM" + (content.hasBeat ? "" : " (no clock)");
}

std::string controlText(const std::optional<Backend::QelStatus::SelectedControl>& control) {
    if (!control) {
        return "no control";
    }
    const std::string name = control->name.empty() ? "control " + control->cell.toXmlString() : control->name;
    return name + " = " + std::to_string(control->value) + more(control->count);
}

} // namespace

std::string statusText(const StatusContent& content) {
    const auto& backend = content.backend;
    return (backend.program.empty() ? "untitled program" : backend.program) + " | " + zoneText(backend.zone) + " | " +
           controlText(backend.control) + " | " + tempoText(content) + " | " + std::to_string(content.heldNotes) +
           (content.heldNotes == 1 ? " note" : " notes") + " held | in: " + joined(content.inputs) +
           " | out: " + joined(content.outputs);
}

std::string fitted(std::string_view text, int columns) {
    std::string result;
    for (const char c : Platform::withoutControls(text)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool goesOn = (byte & 0xC0) == 0x80; // with the character before
        if (!goesOn && --columns < 0) {
            break;
        }
        result += c;
    }
    return result;
}

} // namespace Host
