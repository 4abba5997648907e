// Fuzzes the reader of Standard MIDI Files. Seeds: tests/corpus/smf.
#include "host/SmfReader.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto reader = Host::SmfReader::open(std::string(reinterpret_cast<const char*>(data), size), "fuzz", 4);
    if (reader) {
        Host::PerformanceEvent event;
        std::int32_t tick = 0;
        while (reader.value()->next(event)) {
            if (event.tick < tick || event.tick > Host::latestTick) {
                __builtin_trap();
            }
            tick = event.tick;
        }
    }
    return 0;
}
