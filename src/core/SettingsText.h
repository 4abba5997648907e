// Texts as the settings store keeps them.
#pragma once

#include "platform/SettingsStore.h"

#include <optional>
#include <string>

namespace Backend {

// The bytes of a value of any kind up to the first zero; nothing of one longer than 1000 bytes, its zero included.
[[nodiscard]] std::optional<std::string> storedText(const Platform::SettingsValue& stored);

} // namespace Backend
