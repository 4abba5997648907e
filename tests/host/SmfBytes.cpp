#include "host/SmfBytes.h"

#include <stdexcept>

namespace {

std::uint8_t byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes.at(at));
}

std::uint32_t takeVariable(std::string_view bytes, std::size_t& at) {
    std::uint32_t number = 0;
    while (true) {
        const std::uint8_t byte = byteAt(bytes, at++);
        number = number << 7 | (byte & 0x7FU);
        if (byte < 0x80) {
            return number;
        }
    }
}

std::string take(std::string_view bytes, std::size_t& at, std::size_t count) {
    if (bytes.size() - at < count) {
        throw std::out_of_range("a track is too short");
    }
    at += count;
    return std::string(bytes.substr(at - count, count));
}

std::vector<SmfEvent> eventsOf(std::string_view bytes) {
    std::vector<SmfEvent> events;
    std::int64_t tick = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        tick += takeVariable(bytes, at);
        std::string event = take(bytes, at, 1);
        const auto status = static_cast<std::uint8_t>(event[0]);
        if (status == 0xFF) {
            event += take(bytes, at, 1);
        }
        if (status >= 0xF0) {
            event += take(bytes, at, takeVariable(bytes, at));
        } else if (status >= 0x80) {
            event += take(bytes, at, (status & 0xE0) == 0xC0 ? 1 : 2);
        } else {
            throw std::out_of_range("running status");
        }
        events.push_back({tick, event});
    }
    return events;
}

std::uint32_t takeNumber(std::string_view bytes, std::size_t& at, std::size_t size) {
    std::uint32_t number = 0;
    for (const char byte : take(bytes, at, size)) {
        number = number << 8 | static_cast<std::uint8_t>(byte);
    }
    return number;
}

} // namespace

std::string bigEndian(std::uint32_t number, int size) {
    std::string bytes;
    while (size-- > 0) {
        bytes.push_back(static_cast<char>(number >> (8 * size) & 0xFF));
    }
    return bytes;
}

std::string variableLength(std::uint32_t number) {
    std::string bytes(1, static_cast<char>(number & 0x7F));
    while ((number >>= 7) != 0) {
        bytes.insert(bytes.begin(), static_cast<char>(0x80 | (number & 0x7F)));
    }
    return bytes;
}

std::string chunk(std::string_view type, std::string_view content) {
    return std::string(type) + bigEndian(static_cast<std::uint32_t>(content.size()), 4) + std::string(content);
}

std::string smf(int format, int division, const std::vector<std::string>& tracks) {
    std::string file = chunk("MThd", bigEndian(static_cast<std::uint32_t>(format), 2) +
                                         bigEndian(static_cast<std::uint32_t>(tracks.size()), 2) +
                                         bigEndian(static_cast<std::uint32_t>(division), 2));
    for (const std::string& track : tracks) {
        file += chunk("MTrk", track);
    }
    return file;
}

std::string hex(std::string_view digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        pair.push_back(digit);
        if (pair.size() == 2) {
            bytes.push_back(static_cast<char>(std::stoi(pair, nullptr, 16)));
            pair.clear();
        }
    }
    return bytes;
}

std::vector<std::vector<SmfEvent>> tracksOf(std::string_view file) {
    std::size_t at = 14;
    if (file.substr(0, 8) != std::string_view("MThd\0\0\0\6", 8)) {
        throw std::out_of_range("no header");
    }
    std::vector<std::vector<SmfEvent>> tracks;
    while (at < file.size()) {
        if (take(file, at, 4) != "MTrk") {
            throw std::out_of_range("no track");
        }
        const std::uint32_t length = takeNumber(file, at, 4);
        tracks.push_back(eventsOf(take(file, at, length)));
    }
    return tracks;
}
