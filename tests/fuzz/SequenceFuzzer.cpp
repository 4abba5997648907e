// Fuzzes the reader of sequences' steps. Seeds: tests/corpus/sequence.
#include "generators/SequenceText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Backend::SequenceManagement;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Sequence sequence = sequenceOf(text);
    for (const Step& step : sequence.steps) {
        if (step.empty() || step.size() > maxEntries || sequence.steps.size() > maxSteps) {
            __builtin_trap();
        }
    }
    // What is written is without fault and is read back as it plays.
    const std::string written = textOf(sequence);
    if (textOf(sequenceOf(written)) != written) {
        __builtin_trap();
    }
    static_cast<void>(faultsOfSequence(text));
    return 0;
}
