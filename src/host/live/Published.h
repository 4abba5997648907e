// A small value that one thread writes and others read, without locks.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Host {

// The writer never waits. A reader tries again while the writer is at it, so it always gets a value that was written
// whole: the sequence is odd during a write, and whoever has seen a word of a write also sees its odd sequence.
template <typename Value> class Published final {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    explicit Published(const Value& value) noexcept { store(value); }

    void store(const Value& value) noexcept { // one thread
        std::array<std::uint64_t, wordCount> words{};
        std::memcpy(words.data(), &value, sizeof(Value));
        const std::uint32_t sequence = sequence_.load(std::memory_order_relaxed);
        sequence_.store(sequence + 1, std::memory_order_relaxed);
        for (std::size_t i = 0; i < wordCount; ++i) {
            words_[i].store(words[i], std::memory_order_release);
        }
        sequence_.store(sequence + 2, std::memory_order_release);
    }

    [[nodiscard]] Value load() const noexcept { // [any]
        std::array<std::uint64_t, wordCount> words{};
        std::uint32_t sequence = 0;
        do {
            sequence = sequence_.load(std::memory_order_acquire);
            for (std::size_t i = 0; i < wordCount; ++i) {
                words[i] = words_[i].load(std::memory_order_acquire);
            }
        } while ((sequence & 1U) != 0 || sequence_.load(std::memory_order_relaxed) != sequence);
        std::array<std::byte, sizeof(Value)> bytes;
        std::memcpy(bytes.data(), words.data(), sizeof(Value));
        return std::bit_cast<Value>(bytes);
    }

private:
    static constexpr std::size_t wordCount = (sizeof(Value) + 7) / 8;

    std::atomic<std::uint32_t> sequence_ = 0;
    std::array<std::atomic<std::uint64_t>, wordCount> words_{};
};

} // namespace Host
