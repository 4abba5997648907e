// Fuzzes the reader of version-2 files: what comes out is well-formed, or refused. Seeds: tests/corpus/version2.
#include "backend/Version2Import.h"
#include "platform/Utf8.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto converted = Backend::convertVersion2(text, "fuzz");
    // Control characters are what makes the result unreadable, which the import then says.
    const bool hasControls = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' && c != '\r';
    });
    if (converted && !hasControls && text.find("\xEF\xBF") == std::string_view::npos &&
        !Platform::parseXml(converted.value().text, "fuzz")) {
        __builtin_trap();
    }
    return 0;
}
