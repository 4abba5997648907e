// A JACK server without sound, for tests.
#pragma once

#include "e2e/RunningProgram.h"

#include <memory>
#include <string>

// Serves under a name of its own, which the environment names from then on for everything that is started. It ends with
// the process that made it, however that ends.
class JackServer final {
public:
    // Without jackd tests that need it are skipped; with it, one that does not start is a failure.
    [[nodiscard]] static bool isInstalled();
    // `folder` takes its output. Check isRunning().
    JackServer(const std::string& folder, int period);
    // Ends it in good order: the library has places for eight servers, and one that was killed keeps its own.
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    void start();
    void kill(); // at once, as a crash would
    void hang(); // it is there and does nothing
    void goOn(); // harmless when it does not hang
    [[nodiscard]] bool isRunning() const { return running_; }
    [[nodiscard]] std::string error() const; // what it printed

private:
    std::string folder_;
    int period_;
    bool running_ = false;
    std::unique_ptr<RunningProgram> server_;
};
