// The program in a terminal of its own, for tests: what it writes is read, what is typed is given to it. Linux only.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <termios.h>
#include <thread>
#include <vector>

class TerminalProgram final {
public:
    // `simulatesKitty`: the terminal answers when it is asked for the kitty keyboard protocol.
    TerminalProgram(const std::string& program, std::vector<std::string> arguments, bool simulatesKitty);
    ~TerminalProgram(); // kills it when it still runs
    TerminalProgram(const TerminalProgram&) = delete;
    TerminalProgram& operator=(const TerminalProgram&) = delete;

    void type(const std::string& bytes) const;
    void closeTerminal(); // as when its window is closed

    // The exit code; 128 + the number of the signal that ended it; -1 when it did not end in time.
    [[nodiscard]] int waitForEnd();

    [[nodiscard]] std::string text() const; // everything that was written, sequences included
    [[nodiscard]] bool hasWritten(const std::string& part) const { return text().find(part) != std::string::npos; }
    [[nodiscard]] std::string statusLine() const; // as it was drawn last
    // Whether the terminal is set as it was before the program began.
    [[nodiscard]] bool isAsBefore() const;

private:
    void readAndAnswer();

    bool simulatesKitty_;
    int terminal_ = -1; // our end
    int line_ = -1;     // the program's end, kept open so that its settings last
    termios before_{};
    pid_t pid_ = -1;
    int status_ = 0;
    mutable std::mutex mutex_;
    std::string text_;
    std::atomic<bool> ending_ = false;
    std::thread reader_;
};
