// Fuzzes the reader of settings files: what is read and written reads as the same again. Seeds: tests/corpus/settings.
#include "platform/SettingsFormat.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto tree = Platform::parseSettings({reinterpret_cast<const char*>(data), size}, "fuzz");
    if (tree) {
        const std::string written = Platform::formatSettings(tree.value());
        const auto again = Platform::parseSettings(written, "again");
        if (!again || Platform::formatSettings(again.value()) != written) {
            __builtin_trap();
        }
    }
    return 0;
}
