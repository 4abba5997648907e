#include "host/live/linux/JackLibrary.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace Host {

namespace {

void silence(const char*) {}

// Calls that have not come back: a server that hangs is not called again and again.
std::atomic<int> callsUnderWay = 0;
constexpr int mostCallsUnderWay = 2;

// What a call of the library leaves behind for who may have stopped waiting.
struct Attempt {
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    bool isAbandoned = false;
    jack_client_t* client = nullptr;
};

} // namespace

jack_client_t* openJackClient(const std::string& name, std::chrono::nanoseconds patience) {
    jack_set_error_function(silence);
    jack_set_info_function(silence);
    if (callsUnderWay.load() >= mostCallsUnderWay) {
        return nullptr;
    }
    ++callsUnderWay;
    const auto attempt = std::make_shared<Attempt>();
    std::thread([attempt, name] {
        jack_status_t status{};
        jack_client_t* const client = jack_client_open(name.c_str(), JackNoStartServer, &status);
        --callsUnderWay;
        const std::lock_guard lock(attempt->mutex);
        if (attempt->isAbandoned) {
            if (client != nullptr) {
                jack_client_close(client);
            }
            return;
        }
        attempt->client = client;
        attempt->isDone = true;
        attempt->done.notify_one();
    }).detach();

    std::unique_lock lock(attempt->mutex);
    if (!attempt->done.wait_for(lock, patience, [&] { return attempt->isDone; })) {
        attempt->isAbandoned = true;
        return nullptr;
    }
    return attempt->client;
}

void closeJackClient(jack_client_t* client, std::chrono::nanoseconds patience, std::function<void()> afterwards) {
    const auto attempt = std::make_shared<Attempt>();
    std::thread([attempt, client, afterwards = std::move(afterwards)] {
        jack_client_close(client);
        if (afterwards) {
            afterwards();
        }
        const std::lock_guard lock(attempt->mutex);
        attempt->isDone = true;
        attempt->done.notify_one();
    }).detach();

    std::unique_lock lock(attempt->mutex);
    attempt->done.wait_for(lock, patience, [&] { return attempt->isDone; });
}

} // namespace Host
