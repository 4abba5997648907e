// A key of the computer keyboard with the modifiers held beside it.
#pragma once

#include "values/XmlItem.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Codes are Windows' virtual-key codes but for Right Control (225), Print Screen (5) and Numpad Enter (226), which
// have numbers of our own: stored files name them.
class Key final : public XmlItem {
public:
    static constexpr std::uint32_t NO_CODE = 0;
    // What an unknown name reads as: no key that is pressed has it.
    static constexpr std::uint32_t UNKNOWN_CODE = 0x100;
    enum Modifier : std::uint32_t { SHIFT = 1, CONTROL = 2, ALT = 4, WIN = 8 };

    // No key.
    Key() = default;
    explicit Key(std::uint32_t code, std::uint32_t modifiers = 0) noexcept
        : code_(code), modifiers_(static_cast<std::uint8_t>(modifiers & 0x0F)) {}
    // "Shift Control F1": "Shift ", "Control ", "Alt ", "Win " in this order, then the name of the code. Empty: no
    // key.
    explicit Key(std::string_view name) noexcept;
    // Bits 0..7 the code, 8..11 the modifiers; the bits above are not looked at.
    [[nodiscard]] static Key fromPacked(std::uint32_t packed) noexcept { return Key(packed & 0xFF, packed >> 8); }

    // True but for no key and for the code of an unknown name, which packed would be the one of no key.
    [[nodiscard]] bool canBePressed() const noexcept { return code_ != NO_CODE && code_ != UNKNOWN_CODE; }

    [[nodiscard]] std::uint32_t getCode() const noexcept { return code_; }
    [[nodiscard]] bool isShift() const noexcept { return (modifiers_ & SHIFT) != 0; }
    [[nodiscard]] bool isControl() const noexcept { return (modifiers_ & CONTROL) != 0; }
    [[nodiscard]] bool isAlt() const noexcept { return (modifiers_ & ALT) != 0; }
    [[nodiscard]] bool isWin() const noexcept { return (modifiers_ & WIN) != 0; }
    [[nodiscard]] std::uint32_t getModifiers() const noexcept { return modifiers_; }
    [[nodiscard]] Key withoutModifiers() const noexcept { return Key(code_); }
    // Only the low 8 bits of the code travel.
    [[nodiscard]] std::uint32_t getPacked() const noexcept {
        return (code_ & 0xFF) | static_cast<std::uint32_t>(modifiers_) << 8;
    }

    // The name that the constructor reads; "Unknown" for a code without one.
    [[nodiscard]] std::string getName() const;
    [[nodiscard]] std::string toXmlString() const override { return getName(); }

    friend bool operator==(const Key& a, const Key& b) noexcept {
        return a.code_ == b.code_ && a.modifiers_ == b.modifiers_;
    }

private:
    std::uint32_t code_ = NO_CODE;
    std::uint8_t modifiers_ = 0;
};

template <> struct std::hash<Key> {
    [[nodiscard]] std::size_t operator()(const Key& key) const noexcept {
        return std::hash<std::uint64_t>{}(static_cast<std::uint64_t>(key.getModifiers()) << 32 | key.getCode());
    }
};
