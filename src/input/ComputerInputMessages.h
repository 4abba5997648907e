// What the window is sent about the computer keyboard.
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Backend::ComputerInput {

// Keys were added or replaced: wParam a heap copy of a vector<KeyConfiguration>.
inline constexpr std::uint32_t keysPutMessage = Platform::applicationMessage + 701;
// The section is another: wParam a heap copy of the KeyConfigurationMap; 0 is a mere notice, behind keysPutMessage.
inline constexpr std::uint32_t keysMessage = Platform::applicationMessage + 703;

} // namespace Backend::ComputerInput
