// Random test cases that can be repeated.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

// A generator with a new seed each run, or with TEMBREL_SEED. The seed is printed with every failure in its lifetime.
class RandomCases final {
public:
    RandomCases() : seed_(chooseSeed()), trace_(__FILE__, __LINE__, "TEMBREL_SEED=" + std::to_string(seed_)) {}

    // Between both, inclusive.
    template <typename Number> Number number(Number lowest, Number highest) {
        return static_cast<Number>(std::uniform_int_distribution<long long>(lowest, highest)(generator_));
    }

    [[nodiscard]] std::mt19937& generator() { return generator_; }

private:
    static unsigned chooseSeed() {
        const auto* const given = std::getenv("TEMBREL_SEED");
        return given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device()();
    }

    unsigned seed_;
    testing::ScopedTrace trace_;
    std::mt19937 generator_{seed_};
};
