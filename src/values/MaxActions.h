// How much one thing that is touched may do.
#pragma once

#include <cstddef>

// Functions of a key or button, events of a control or axis, translations of a message. A file that holds more is
// damaged or hostile: the rest is not read, so that one touch cannot keep everybody else waiting.
inline constexpr std::size_t maxActions = 1024;
