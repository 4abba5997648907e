#include "platform/SettingsFormat.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace Platform {
namespace {

constexpr std::string_view firstLine = "# Tembrel settings, format 1";
constexpr std::string_view hexDigits = "0123456789abcdef";

std::string_view charsOf(const std::vector<std::byte>& data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}
std::vector<std::byte> bytesOf(std::string_view text) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(text.data());
    return {bytes, bytes + text.size()};
}

void appendHex(std::string& to, unsigned char byte) {
    to += hexDigits[byte >> 4];
    to += hexDigits[byte & 15U];
}

// `special` are the characters that mean something where the text will stand. Text beyond ASCII stays readable when
// the whole is UTF-8.
std::string escaped(std::string_view text, std::string_view special) {
    const bool keepsHighBytes = isUtf8(text);
    std::string result;
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '\\' || letter == '"') {
            result += '\\';
            result += letter;
        } else if (letter == '\n') {
            result += "\\n";
        } else if (code < 0x20 || code == 0x7F || (code >= 0x80 && !keepsHighBytes) ||
                   special.find(letter) != std::string_view::npos) {
            result += "\\x";
            appendHex(result, code);
        } else {
            result += letter;
        }
    }
    return result;
}

std::string formatValue(const SettingsValue& value) {
    const std::string_view data = charsOf(value.data);
    if (value.kind == SettingsKind::string) {
        const bool isTerminated = !data.empty() && data.back() == '\0';
        return "string \"" + escaped(isTerminated ? data.substr(0, data.size() - 1) : data, {}) + '"' +
               (isTerminated ? "" : " unterminated");
    }
    if (value.kind == SettingsKind::number && data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i > 0; --i) {
            number = (number << 8) | static_cast<unsigned char>(data[i - 1]);
        }
        return "number " + std::to_string(number);
    }
    std::string text = value.kind == SettingsKind::bytes
                           ? "bytes"
                           : "kind " + std::to_string(static_cast<std::uint32_t>(value.kind)) + " bytes";
    for (const char byte : data) {
        text += ' ';
        appendHex(text, static_cast<unsigned char>(byte));
    }
    return text;
}

// Reads one line from left to right; each step says whether it went well.
class LineReader final {
public:
    explicit LineReader(std::string_view line) noexcept : rest_(line) {}

    bool isAtEnd() const noexcept { return rest_.empty(); }
    bool take(std::string_view expected) noexcept {
        if (!rest_.starts_with(expected)) {
            return false;
        }
        rest_.remove_prefix(expected.size());
        return true;
    }
    // An escaped text up to `end`, which is taken, too.
    std::optional<std::string> takeEscaped(char end);
    std::optional<std::uint32_t> takeNumber() noexcept;
    // Pairs of hexadecimal digits, each with a blank before it, up to the end.
    std::optional<std::vector<std::byte>> takeBytes();

private:
    std::optional<unsigned char> takeHexByte() noexcept;

    std::string_view rest_;
};

std::optional<unsigned char> LineReader::takeHexByte() noexcept {
    unsigned value = 0;
    const char* const start = rest_.data();
    if (rest_.size() < 2 || std::from_chars(start, start + 2, value, 16).ptr != start + 2) {
        return {};
    }
    rest_.remove_prefix(2);
    return static_cast<unsigned char>(value);
}

std::optional<std::string> LineReader::takeEscaped(char end) {
    std::string text;
    while (!rest_.empty()) {
        const char letter = rest_.front();
        rest_.remove_prefix(1);
        if (letter == end) {
            return text;
        }
        if (letter != '\\') {
            text += letter;
        } else if (take("n")) {
            text += '\n';
        } else if (take("x")) {
            const auto byte = takeHexByte();
            if (!byte) {
                return {};
            }
            text += static_cast<char>(*byte);
        } else if (take("\\")) {
            text += '\\';
        } else if (take("\"")) {
            text += '"';
        } else {
            return {};
        }
    }
    return {};
}

std::optional<std::uint32_t> LineReader::takeNumber() noexcept {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (error != std::errc()) {
        return {};
    }
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
}

std::optional<std::vector<std::byte>> LineReader::takeBytes() {
    std::vector<std::byte> bytes;
    while (!isAtEnd()) {
        const auto byte = take(" ") ? takeHexByte() : std::nullopt;
        if (!byte) {
            return {};
        }
        bytes.push_back(static_cast<std::byte>(*byte));
    }
    return bytes;
}

std::optional<SettingsValue> parseValue(LineReader& line) {
    if (line.take("string \"")) {
        auto text = line.takeEscaped('"');
        if (!text || !(line.take(" unterminated") || (text->push_back('\0'), true)) || !line.isAtEnd()) {
            return {};
        }
        return SettingsValue{SettingsKind::string, bytesOf(*text)};
    }
    if (line.take("number ")) {
        const auto number = line.takeNumber();
        return number && line.isAtEnd() ? std::optional(SettingsValue::ofNumber(*number)) : std::nullopt;
    }
    std::optional<std::uint32_t> kind = static_cast<std::uint32_t>(SettingsKind::bytes);
    if (line.take("kind ")) {
        kind = line.takeNumber();
        if (!kind || !line.take(" ")) {
            return {};
        }
    }
    auto bytes = line.take("bytes") ? line.takeBytes() : std::nullopt;
    return bytes ? std::optional(SettingsValue{static_cast<SettingsKind>(*kind), std::move(*bytes)}) : std::nullopt;
}

} // namespace

std::string formatSettings(const SettingsTree& tree) {
    std::string text(firstLine);
    text += '\n';
    for (const auto& [path, values] : tree.keys) {
        text += "\n[";
        std::string_view separator;
        for (const std::string& part : partsOfKeyPath(path, '\\')) {
            text += separator;
            text += escaped(part, "/]");
            separator = "/";
        }
        text += "]\n";
        for (const auto& [name, value] : values) {
            text += '"' + escaped(name, {}) + "\" = " + formatValue(value) + '\n';
        }
    }
    return text;
}

Result<SettingsTree> parseSettings(std::string_view text, const std::string& file) {
    SettingsTree tree;
    SettingsValues* values = nullptr;
    int lineNumber = 0;
    const auto failed = [&](const char* reason) { return Fault{file, lineNumber, reason}; };
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3); // some editors put a byte order mark there
    }
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        std::string_view content = text.substr(0, length);
        text.remove_prefix(std::min(length + 1, text.size()));
        ++lineNumber;
        // Editors on Windows may have put it there.
        if (content.ends_with('\r')) {
            content.remove_suffix(1);
        }
        if (lineNumber == 1 && content != firstLine) {
            return failed("is no settings file of a known format");
        }
        if (content.empty() || content.front() == '#') {
            continue;
        }
        LineReader line(content);
        if (line.take("[")) {
            // Split before the escapes are resolved: an escaped separator belongs to its part.
            if (content.back() != ']') {
                return failed("a key without its closing bracket");
            }
            std::vector<std::string> parts;
            for (const std::string& part : partsOfKeyPath(content.substr(1, content.size() - 2), '/')) {
                const std::string closed = part + ']';
                LineReader partLine(closed);
                const auto resolved = partLine.takeEscaped(']');
                if (!resolved || !partLine.isAtEnd() || resolved->find('\\') != std::string::npos) {
                    return failed("a key that is not understood");
                }
                parts.push_back(*resolved);
            }
            values = &tree.keys[keyPathOfParts(parts)];
            continue;
        }
        const auto name = line.take("\"") ? line.takeEscaped('"') : std::nullopt;
        if (!name || !line.take(" = ")) {
            return failed("a value without its name");
        }
        auto value = parseValue(line);
        if (!value) {
            return failed("a value that is not understood");
        }
        if (values == nullptr) {
            return failed("a value before any key");
        }
        values->insert_or_assign(*name, std::move(*value));
    }
    if (lineNumber == 0) {
        return failed("is empty");
    }
    return tree;
}

} // namespace Platform
