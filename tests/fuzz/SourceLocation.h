// std::source_location for versions of clang that the standard library does not give it to.
#pragma once

#include <cstdint>

namespace std {

struct source_location {
    static constexpr source_location current(const char* file = __builtin_FILE(),
                                             const char* function = __builtin_FUNCTION(),
                                             std::uint_least32_t line = __builtin_LINE()) noexcept {
        source_location place;
        place.file_ = file;
        place.function_ = function;
        place.line_ = line;
        return place;
    }
    [[nodiscard]] constexpr const char* file_name() const noexcept { return file_; }
    [[nodiscard]] constexpr const char* function_name() const noexcept { return function_; }
    [[nodiscard]] constexpr std::uint_least32_t line() const noexcept { return line_; }
    [[nodiscard]] constexpr std::uint_least32_t column() const noexcept { return 0; }

private:
    const char* file_ = "";
    const char* function_ = "";
    std::uint_least32_t line_ = 0;
};

} // namespace std
