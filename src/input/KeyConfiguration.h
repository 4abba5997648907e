// What one key of the computer keyboard does.
#pragma once

#include "input/Function.h"
#include "values/Key.h"

#include <memory>
#include <optional>
#include <vector>

namespace Backend::ComputerInput {

// Functions are never changed once they stand in an entry, so that copies share them.
struct FunctionEntry {
    bool keepSending = false;                                   // the down function is repeated while the key repeats
    std::shared_ptr<const FunctionManagement::Function> down{}; // null: none
    std::shared_ptr<const FunctionManagement::Function> up{};   // null: none

    [[nodiscard]] bool isIdle() const { return down == nullptr && up == nullptr; }
    friend bool operator==(const FunctionEntry& a, const FunctionEntry& b);
};

struct KeyConfiguration {
    Key key;
    std::vector<FunctionEntry> entries{}; // executed in this order
    bool global = true;                   // kept for the capture of keys while another program has the keyboard

    // Without its idle entries; nothing when no other is left.
    [[nodiscard]] std::optional<KeyConfiguration> activePart() const;
    friend bool operator==(const KeyConfiguration& a, const KeyConfiguration& b) = default;
};

} // namespace Backend::ComputerInput
