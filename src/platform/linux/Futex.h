// The kernel's wait-on-a-word, the ground of all blocking in this folder.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

namespace Platform {

// Sleeps while `word` holds `expected`, until a wake or the deadline (monotonic time). May return without either:
// callers look at their state again. False only when the deadline has passed.
bool futexWait(const std::atomic<std::uint32_t>& word, std::uint32_t expected,
               std::optional<std::chrono::nanoseconds> deadline = {}) noexcept;

// Wakes one sleeper. Only the address counts: the word may be gone by now.
void futexWakeOne(const std::atomic<std::uint32_t>& word) noexcept;

} // namespace Platform
