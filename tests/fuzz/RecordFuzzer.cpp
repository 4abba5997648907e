// Fuzzes the reader of buffer files and of their index: the first line is the index, the rest a buffer.
#include "generators/recording/BufferReader.h"
#include "generators/recording/TakeList.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Backend::Recording;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t line = std::min(input.find('\n'), input.size());
    const std::string buffer = input.substr(line);
    BufferReader reader(buffer);
    TakeList list;
    std::size_t at = 0;
    for (BufferEvent event; reader.next(event); at = reader.position()) {
        if (reader.position() <= at || event.message.empty() || event.message.size() > 3) {
            __builtin_trap();
        }
        list.add(event, static_cast<std::uint32_t>(reader.position() - at), 0);
    }
    auto takes = list.takes();
    if (list.size() != at || (!takes.empty() && takes.back().end != at)) {
        __builtin_trap();
    }
    setStarts(takes, indexOf({}) + input.substr(0, line), 1'700'000'000'000);
    return 0;
}
