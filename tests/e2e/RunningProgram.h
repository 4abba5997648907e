// The program as a process of its own, for tests. Linux only.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

// Looks again and again with short pauses: true as soon as the condition holds, false when it did not for a long time,
// long enough for a machine that does ten other things.
[[nodiscard]] bool eventually(const std::function<bool()>& condition);

// Standard input is a pipe that stays open until closeInput(); output and error go to files.
class RunningProgram final {
public:
    // `program` is a file or a name to be looked for; `folder` takes the files of output and error.
    RunningProgram(const std::string& program, std::vector<std::string> arguments, const std::string& folder);
    ~RunningProgram(); // asks it to end when it still runs, and kills it when it does not within two seconds
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    void write(const std::string& text) const;
    void closeInput();
    void signal(int number) const;
    // The exit code; 128 + the number of the signal that ended it; -1 when it did not end in time.
    [[nodiscard]] int waitForEnd();
    [[nodiscard]] bool isRunning();
    [[nodiscard]] pid_t processId() const { return pid_; }

    [[nodiscard]] std::string output() const;
    [[nodiscard]] std::string error() const;

private:
    std::string outputFile_;
    std::string errorFile_;
    int input_ = -1;
    pid_t pid_ = -1;
    int status_ = 0;
};
