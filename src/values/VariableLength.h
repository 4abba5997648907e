// Numbers as Standard MIDI Files (SMF 1.0) write them: seven bits a byte, the highest first, bit 7 set on every byte
// but the last.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Backend {

// The largest number of four bytes; the format knows no longer ones.
inline constexpr std::uint32_t largestVariableLength = 0x0FFF'FFFF;

// The bytes of a number up to largestVariableLength.
class VariableLength final {
public:
    explicit VariableLength(std::uint32_t number) noexcept {
        bytes_[--first_] = static_cast<char>(number & 0x7F);
        while ((number >>= 7) != 0 && first_ > 0) {
            bytes_[--first_] = static_cast<char>(0x80 | (number & 0x7F));
        }
    }
    [[nodiscard]] std::string_view bytes() const noexcept { return {bytes_ + first_, sizeof bytes_ - first_}; }

private:
    char bytes_[4];
    std::size_t first_ = sizeof bytes_;
};

enum class VariableLengthFound { number, cut, tooLong };

// The number that begins at `at`, which is moved behind it; to `end` when that comes first, to the fourth byte when the
// number is longer.
[[nodiscard]] inline VariableLengthFound readVariableLength(const std::uint8_t*& at, const std::uint8_t* end,
                                                            std::uint32_t& number) noexcept {
    number = 0;
    for (int count = 0; count < 4; ++count) {
        if (at == end) {
            return VariableLengthFound::cut;
        }
        const std::uint8_t byte = *at++;
        number = number << 7 | (byte & 0x7FU);
        if (byte < 0x80) {
            return VariableLengthFound::number;
        }
    }
    --at;
    return VariableLengthFound::tooLong;
}

} // namespace Backend
