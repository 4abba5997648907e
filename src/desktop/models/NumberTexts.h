// How numbers are written on screen.
#pragma once

#include <QString>

namespace Desktop {

[[nodiscard]] QString noteText(int note);     // "C4"; 0..127
[[nodiscard]] QString signedText(int number); // "+3", "0", "-3"

} // namespace Desktop
