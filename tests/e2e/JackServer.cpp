#include "e2e/JackServer.h"

#include "e2e/JackLeftovers.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <jack/jack.h>
#include <sstream>
#include <unistd.h>

namespace {

bool answers() {
    jack_client_t* const client = jack_client_open("tembrel-test-probe", JackNoStartServer, nullptr);
    if (client == nullptr) {
        return false;
    }
    jack_client_close(client);
    return true;
}

} // namespace

bool JackServer::isInstalled() {
    const char* const path = getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((std::filesystem::path(folder) / "jackd").c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

JackServer::JackServer(const std::string& folder, int period) : folder_(folder), period_(period) {
    setenv("JACK_DEFAULT_SERVER", testServerName(getpid()).c_str(), 1);
    setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    if (isInstalled()) {
        static const bool cleared = (clearJackLeftovers(folder), true); // once in a process
        static_cast<void>(cleared);
        start();
    }
}

JackServer::~JackServer() {
    if (!server_) {
        return;
    }
    if (!running_) {
        start(); // takes its own place again
    }
    server_->signal(SIGTERM);
    static_cast<void>(server_->waitForEnd());
}

// Synchronous: the server waits for its clients, so that a busy machine costs time and no periods.
void JackServer::start() {
    const std::vector<std::string> arguments{
        "--pdeathsig", "TERM", "jackd", "-n", testServerName(getpid()), "-r", "-S", "-d",
        "dummy",       "-r",   "48000", "-p", std::to_string(period_)};
    for (int tries = 0; tries < 3 && !running_; ++tries) {
        server_ = std::make_unique<RunningProgram>("setpriv", arguments, folder_);
        running_ = server_->isRunning() && eventually([this] { return answers() || !server_->isRunning(); }) &&
                   server_->isRunning();
    }
}

std::string JackServer::error() const {
    return !server_ ? "" : server_->error() + server_->output();
}

void JackServer::kill() {
    server_->signal(SIGKILL);
    static_cast<void>(server_->waitForEnd());
    running_ = false;
}

void JackServer::hang() {
    server_->signal(SIGSTOP);
}

void JackServer::goOn() {
    server_->signal(SIGCONT);
}
