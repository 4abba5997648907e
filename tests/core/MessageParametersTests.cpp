#include "core/MessageParameters.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace Backend {
namespace {

// Counts how many of it live.
struct Counted {
    explicit Counted(int& count) : living(&count) { ++*living; }
    Counted(const Counted& other) : living(other.living) { ++*living; }
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --*living; }
    int* living;
};

TEST(MessageParameters, OneSideOwnsTheCopyAtAnyTime) {
    int living = 0;
    std::uintptr_t parameter = 0;
    {
        const Counted original(living);
        EXPECT_TRUE(postCopy(original, [&](std::uintptr_t copy) {
            parameter = copy;
            return true;
        }));
        EXPECT_EQ(living, 2);
    }
    EXPECT_EQ(living, 1) << "an accepted copy belongs to its handler";
    EXPECT_EQ(takeCopy<Counted>(static_cast<std::intptr_t>(parameter))->living, &living);
    EXPECT_EQ(living, 0);

    EXPECT_FALSE(postCopy(Counted(living), [](std::uintptr_t) { return false; }));
    EXPECT_EQ(living, 0) << "a refused copy is freed by the poster";

    const auto throwing = [](std::uintptr_t) -> bool { throw std::runtime_error("full"); };
    EXPECT_THROW(postCopy(Counted(living), throwing), std::runtime_error);
    EXPECT_EQ(living, 0) << "and so is one whose post throws";
}

} // namespace
} // namespace Backend
