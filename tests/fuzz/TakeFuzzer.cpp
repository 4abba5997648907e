// Fuzzes what comes in by the local socket.
#include "host/TakeTalk.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto question = Host::readTakeQuestion(text)) {
        if (Host::readTakeQuestion(Host::textOf(*question)) != question) {
            __builtin_trap();
        }
    }
    if (const auto answer = Host::readTakeAnswer(text)) {
        if (!Host::readTakeAnswer(Host::textOf(answer))) {
            __builtin_trap();
        }
    }
    return 0;
}
