#include "e2e/JackLeftovers.h"

#include "e2e/RunningProgram.h"
#include "support/FileContent.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <regex>
#include <set>
#include <system_error>

namespace {

namespace fs = std::filesystem;

const fs::path sharedMemory = "/dev/shm";
constexpr const char* serverPrefix = "tembrel-test-";

bool isGone(pid_t process) {
    return kill(process, 0) != 0 && errno == ESRCH;
}

struct Leftovers {
    std::set<pid_t> served; // tests whose server lives
    std::set<pid_t> places; // tests that are gone, and whose server is
};

// In the registry each server's process stands in front of "jack-USER:NAME:".
Leftovers findPlaces() {
    Leftovers found;
    const std::string registry = TestSupport::contentOf(sharedMemory / "jack-shm-registry");
    const std::regex entry("jack-[0-9]+:" + std::string(serverPrefix) + "([0-9]+):");
    for (std::sregex_iterator each(registry.begin(), registry.end(), entry), end; each != end; ++each) {
        const pid_t test = std::stoi((*each)[1]);
        pid_t server = 0;
        if (const auto at = static_cast<std::size_t>(each->position()); at >= sizeof server) {
            std::memcpy(&server, registry.data() + at - sizeof server, sizeof server);
        }
        if (server <= 0 || !isGone(server)) {
            found.served.insert(test);
        } else if (isGone(test)) {
            found.places.insert(test);
        }
    }
    return found;
}

void removeFiles(const std::set<pid_t>& served) {
    const std::regex file("jack_(sem\\.[0-9]+_)?" + std::string(serverPrefix) + "([0-9]+)_.*");
    std::error_code ignored;
    for (const fs::directory_entry& each : fs::directory_iterator(sharedMemory, ignored)) {
        const std::string name = each.path().filename().string();
        std::smatch match;
        if (std::regex_match(name, match, file)) {
            const pid_t test = std::stoi(match[2]);
            if (isGone(test) && served.count(test) == 0) {
                fs::remove(each.path(), ignored);
            }
        }
    }
}

} // namespace

std::string testServerName(pid_t process) {
    return serverPrefix + std::to_string(process);
}

void clearJackLeftovers(const std::string& folder) {
    const Leftovers found = findPlaces();
    removeFiles(found.served);
    for (const pid_t test : found.places) {
        const std::string name = testServerName(test);
        RunningProgram successor("jackd", {"-n", name, "-d", "dummy"}, folder);
        static_cast<void>(
            eventually([&] { return fs::exists(sharedMemory / ("jack_" + name + "_0_0")) || !successor.isRunning(); }));
        successor.signal(SIGTERM);
        static_cast<void>(successor.waitForEnd());
    }
}
