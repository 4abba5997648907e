#include "values/MessageType.h"

#include <algorithm>
#include <array>

namespace Backend::MidiEngine {

namespace {

struct NamedType {
    MessageType type;
    std::string name;
};

const std::array<NamedType, 19>& namedTypes() {
    static const std::array<NamedType, 19> types{{
        {MessageType::noteOff, "Note Off"},
        {MessageType::noteOn, "Note On"},
        {MessageType::keyPressure, "Key Pressure"},
        {MessageType::controllerChange, "Controller Change"},
        {MessageType::programChange, "Program Change"},
        {MessageType::channelPressure, "Channel Pressure"},
        {MessageType::pitchBend, "Pitch Bend"},
        {MessageType::systemExclusive, "System Exclusive"},
        {MessageType::songPosition, "Song Position"},
        {MessageType::songSelect, "Song Select"},
        {MessageType::unofficialBusSelect, "Unofficial Bus Select"},
        {MessageType::tuneRequest, "Tune Request"},
        {MessageType::endOfSysex, "End Of Sysex"},
        {MessageType::timingTick, "Timing Tick"},
        {MessageType::startSong, "Start Song"},
        {MessageType::continueSong, "Continue Song"},
        {MessageType::stopSong, "Stop Song"},
        {MessageType::activeSensing, "Active Sensing"},
        {MessageType::systemReset, "System Reset"},
    }};
    return types;
}

} // namespace

const std::string& eventName(MessageType type) {
    static const std::string unknown = "Unknown";
    const auto& types = namedTypes();
    const auto found = std::find_if(types.begin(), types.end(), [type](const auto& row) { return row.type == type; });
    return found == types.end() ? unknown : found->name;
}

MessageType messageTypeFromName(std::string_view name) noexcept {
    const auto& types = namedTypes();
    const auto found = std::find_if(types.begin(), types.end(), [name](const auto& row) { return row.name == name; });
    return found == types.end() ? MessageType::none : found->type;
}

bool isKnown(MessageType type) noexcept {
    const auto& types = namedTypes();
    return std::any_of(types.begin(), types.end(), [type](const auto& row) { return row.type == type; });
}

} // namespace Backend::MidiEngine
