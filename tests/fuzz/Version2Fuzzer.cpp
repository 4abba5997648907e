// Fuzzes the reader of version-2 files: what comes out is well-formed. Seeds: tests/corpus/version2.
#include "backend/Version2Import.h"
#include "platform/XmlDocument.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto converted = Backend::convertVersion2(text, "fuzz");
    if (converted && !Platform::parseXml(converted.value().text, "fuzz")) {
        __builtin_trap();
    }
    return 0;
}
