// The text form of a settings tree.
//
//     # Tembrel settings, format 1
//     [Software/Company/Application/3.2]
//     "Name" = string "text, \\ \" \n \x01 escaped"
//     "Size" = number 200
//     "Rectangle" = bytes 00 01 fe ff
//     "Odd" = kind 7 bytes 61 00          (whatever has none of the forms above)
//
// A string that does not end with its zero has the word "unterminated" behind it. Empty lines and lines that begin
// with "#" say nothing; the first line must be as above.
#pragma once

#include "platform/Result.h"
#include "platform/SettingsTree.h"

namespace Platform {

[[nodiscard]] std::string formatSettings(const SettingsTree& tree);

// The fault says file and line of what is not understood.
[[nodiscard]] Result<SettingsTree> parseSettings(std::string_view text, const std::string& file);

} // namespace Platform
