// Fuzzes the reader of performance scripts. Seeds: tests/corpus/script.
#include "host/PerformanceScript.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto script = Host::PerformanceScript::open(std::string(reinterpret_cast<const char*>(data), size), "fuzz", 4);
    if (script) {
        Host::PerformanceEvent event;
        std::int32_t tick = 0;
        while (script.value()->next(event)) {
            if (event.tick < tick || event.tick > Host::latestTick) {
                __builtin_trap();
            }
            tick = event.tick;
        }
    }
    return 0;
}
