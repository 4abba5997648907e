#include "generators/recording/BufferReader.h"

#include "generators/recording/PlayedMessage.h"
#include "values/VariableLength.h"

namespace Backend::Recording {

bool BufferReader::next(BufferEvent& event) noexcept {
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes_.data());
    const auto* const end = at + bytes_.size();
    if (readVariableLength(at, end, event.ticks) != VariableLengthFound::number || at == end) {
        return false;
    }
    const bool running = *at < 0x80;
    const std::uint8_t status = running ? runningStatus_ : *at++;
    if (!isRecordable(status)) {
        return false;
    }
    const auto type = MidiEngine::fixStatus(static_cast<MidiEngine::MessageType>(status));
    const auto data = static_cast<std::size_t>(MidiEngine::dataByteCount(type));
    if (static_cast<std::size_t>(end - at) < data) {
        return false;
    }
    unpacked_[0] = static_cast<char>(status);
    for (std::size_t i = 0; i < data; ++i, ++at) {
        if (*at > 0x7F) {
            return false;
        }
        unpacked_[i + 1] = static_cast<char>(*at);
    }
    runningStatus_ = status < 0xF0 ? status : std::uint8_t{0};
    bytes_.remove_prefix(bytes_.size() - static_cast<std::size_t>(end - at));
    event.message = {unpacked_, data + 1};
    return true;
}

} // namespace Backend::Recording
