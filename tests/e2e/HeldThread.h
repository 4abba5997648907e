// A thread of a program that a file system keeps waiting. Linux only.
#pragma once

#include <string>
#include <sys/types.h>

// Follows one thread, and stops it at the door of the system when it opens a certain file: the rest of the program does
// not see anything but that one call does not come back. Used by one thread; the program outlives it.
class HeldThread final {
public:
    // The thread of that name, which is to open a file whose path contains `file`.
    HeldThread(pid_t program, const std::string& thread, std::string file);
    ~HeldThread(); // lets it go on
    HeldThread(const HeldThread&) = delete;
    HeldThread& operator=(const HeldThread&) = delete;

    // False where threads may not be followed, or there is none of that name.
    [[nodiscard]] bool isFollowed() const { return thread_ > 0; }
    // Lets it run until it opens the file; true when it is stopped there.
    [[nodiscard]] bool isHeld();

private:
    [[nodiscard]] bool opensTheFile() const;

    pid_t thread_ = -1;
    std::string file_;
    bool isHeld_ = false;
};
