#include "input/KeyConfiguration.h"

#include <algorithm>

namespace Backend::ComputerInput {

namespace {

using FunctionPointer = std::shared_ptr<const FunctionManagement::Function>;

bool areEqual(const FunctionPointer& a, const FunctionPointer& b) {
    return a == b || (a != nullptr && b != nullptr && a->equals(*b));
}

} // namespace

bool operator==(const FunctionEntry& a, const FunctionEntry& b) {
    return a.keepSending == b.keepSending && areEqual(a.down, b.down) && areEqual(a.up, b.up);
}

std::optional<KeyConfiguration> KeyConfiguration::activePart() const {
    KeyConfiguration active = *this;
    std::erase_if(active.entries, [](const FunctionEntry& entry) { return entry.isIdle(); });
    return active.entries.empty() ? std::nullopt : std::optional(std::move(active));
}

} // namespace Backend::ComputerInput
