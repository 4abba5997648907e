// The outcome of work that may fail for reasons outside the program.
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace Platform {

// What went wrong, where: a file (or another source's name), a line counted from 1 (0: no line), a reason.
struct Fault {
    std::string file;
    int line = 0;
    std::string reason;

    // "file:line: reason", without the parts that are not there.
    [[nodiscard]] std::string text() const;
};

// A value or the fault that kept it from being.
template <typename Value> class [[nodiscard]] Result final {
public:
    // Both convert: functions return the value or the fault as it is.
    Result(Value value) : content_(std::move(value)) {} // NOLINT(google-explicit-constructor)
    Result(Fault fault) : content_(std::move(fault)) {} // NOLINT(google-explicit-constructor)

    [[nodiscard]] explicit operator bool() const noexcept { return content_.index() == 0; }
    // Only of a result that is true.
    [[nodiscard]] Value& value() {
        assert(*this);
        return std::get<0>(content_);
    }
    [[nodiscard]] const Value& value() const {
        assert(*this);
        return std::get<0>(content_);
    }
    // Only of a result that is false.
    [[nodiscard]] const Fault& fault() const {
        assert(!*this);
        return std::get<1>(content_);
    }

private:
    std::variant<Value, Fault> content_;
};

// The outcome of work that gives nothing but may fail.
using Outcome = Result<std::monostate>;
[[nodiscard]] inline Outcome success() {
    return std::monostate{};
}

} // namespace Platform
