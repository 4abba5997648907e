// Fuzzes the surgery on banks: whatever it takes for a bank, a slot of it can be exchanged and all others stay. Seeds:
// tests/corpus/bank.
#include "backend/BankText.h"

#include <cstddef>
#include <cstdint>

namespace {

// What a change says of its slots is what is there to be read.
void expectToBeAsRead(const Platform::Result<Backend::BankText>& changed) {
    const auto read = Backend::BankText::of(changed.value().text(), "fuzz");
    bool isSame = read && read.value().size() == changed.value().size();
    for (std::size_t slot = 0; isSame && slot < changed.value().size(); ++slot) {
        isSame = read.value().program(slot) == changed.value().program(slot) &&
                 read.value().programName(slot) == changed.value().programName(slot);
    }
    if (!isSame) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bank = Backend::BankText::of(std::string(reinterpret_cast<const char*>(data), size), "fuzz");
    if (bank) {
        const std::size_t slot = size % bank.value().size();
        const auto changed = bank.value().withProgram(slot, "<Program name=\"new\">\n</Program>\n");
        if (!changed || changed.value().program(slot) != "<Program name=\"new\">\n</Program>") {
            const bool inCrLf = bank.value().text().find("\r\n") != std::string::npos;
            if (!changed || !inCrLf) {
                __builtin_trap();
            }
        }
        const auto longer = changed.value().withSize(bank.value().size() + 1);
        if (!longer || longer.value().program(slot) != changed.value().program(slot)) {
            __builtin_trap();
        }
        const auto shorter = bank.value().withSize(1);
        if (!shorter || shorter.value().program(0) != bank.value().program(0)) {
            __builtin_trap();
        }
        for (const auto* const each : {&changed, &longer, &shorter}) {
            expectToBeAsRead(*each);
        }
    }
    return 0;
}
