#include "platform/SettingsStore.h"

namespace Platform {

SettingsValue SettingsValue::ofString(const std::string& text) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(text.c_str());
    return {SettingsKind::string, {bytes, bytes + text.size() + 1}};
}

SettingsValue SettingsValue::ofNumber(std::uint32_t number) {
    SettingsValue value{SettingsKind::number, {}};
    for (unsigned shift = 0; shift < 32; shift += 8) {
        value.data.push_back(static_cast<std::byte>(number >> shift));
    }
    return value;
}

} // namespace Platform
