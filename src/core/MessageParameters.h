// Values that do not fit a message's parameters travel as a heap copy: posted here, taken back here, nowhere else.
#pragma once

#include "platform/WindowMessages.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

namespace Backend {

// Copies (or moves) `value` to the heap and calls `post` with the pointer as a message parameter. `post` says whether
// the message was accepted: then the copy belongs to its handler, which calls takeCopy<Value>. Refused, or when `post`
// throws, the copy is freed here. Returns what `post` said.
template <typename Value, std::predicate<std::uintptr_t> Post> bool postCopy(Value&& value, Post post) {
    auto copy = std::make_unique<std::remove_cvref_t<Value>>(std::forward<Value>(value));
    const bool accepted = post(reinterpret_cast<std::uintptr_t>(copy.get()));
    if (accepted) {
        static_cast<void>(copy.release());
    }
    return accepted;
}

// Takes back, once, what postCopy sent with exactly the type Value.
template <typename Value> [[nodiscard]] std::unique_ptr<Value> takeCopy(std::uintptr_t parameter) {
    return std::unique_ptr<Value>(reinterpret_cast<Value*>(parameter));
}
template <typename Value> [[nodiscard]] std::unique_ptr<Value> takeCopy(std::intptr_t parameter) {
    return takeCopy<Value>(static_cast<std::uintptr_t>(parameter));
}

// What fits goes in the parameter itself: a number as its value, a flag as 0 or 1, a window handle as its address.
[[nodiscard]] constexpr std::uintptr_t asWParam(std::same_as<int> auto value) {
    return static_cast<std::uintptr_t>(value);
}
[[nodiscard]] constexpr std::uintptr_t asWParam(std::same_as<bool> auto value) {
    return value ? 1 : 0;
}
[[nodiscard]] constexpr std::intptr_t asLParam(std::same_as<bool> auto value) {
    return value ? 1 : 0;
}
[[nodiscard]] inline std::intptr_t asLParam(Platform::WindowHandle window) {
    return reinterpret_cast<std::intptr_t>(window);
}
[[nodiscard]] inline Platform::WindowHandle asWindowHandle(std::intptr_t parameter) {
    return reinterpret_cast<Platform::WindowHandle>(parameter);
}

} // namespace Backend
