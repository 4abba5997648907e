#include "platform/LocalServer.h"

#include "platform/Clocks.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/Threads.h"
#include "platform/linux/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

// For one who asks: to say what it wants and to take the answer.
constexpr nanoseconds patienceWithClients = 2s;
constexpr nanoseconds pauseWithoutDescriptors = 100ms;

std::string errorText(int error) {
    return std::generic_category().message(error);
}

std::filesystem::path folderOfSockets(std::size_t nameLength) {
    if (const char* const given = std::getenv("XDG_RUNTIME_DIR"); given != nullptr && *given == '/') {
        std::filesystem::path folder = std::filesystem::path(given) / "tembrel";
        // After a change of the user it may still be that of another, who could exchange what is in it.
        struct stat status {};
        if (::stat(given, &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
            folder.native().size() + nameLength + 1 < sizeof(sockaddr_un::sun_path)) {
            return folder;
        }
    }
    return "/tmp/tembrel-" + std::to_string(::geteuid());
}

// There, ours, and nobody else's.
Outcome checkedFolder(const std::filesystem::path& folder) {
    struct stat status {};
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return Fault{textOf(folder), 0, errorText(errno)};
    }
    if (::lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != ::geteuid() ||
        (status.st_mode & 077) != 0) {
        return Fault{textOf(folder), 0, "is not a folder of this user alone"};
    }
    return success();
}

struct Address {
    std::filesystem::path path;
    sockaddr_un socket{};

    explicit Address(const std::string& name) : path(folderOfSockets(name.size()) / name) {
        socket.sun_family = AF_UNIX;
        std::strncpy(socket.sun_path, path.c_str(), sizeof socket.sun_path - 1);
    }
    [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&socket); }
    [[nodiscard]] Fault fault(int error) const { return {textOf(path), 0, errorText(error)}; }
};

constexpr nanoseconds never = nanoseconds::max();

// Until something can be read (or written), the deadline, or a signal on `stop`, if there is one.
bool waitFor(int file, short events, nanoseconds deadline, int stop) {
    for (;;) {
        std::array<pollfd, 2> polled{{{file, events, 0}, {stop, POLLIN, 0}}};
        const auto left = std::max(deadline - monotonicTime(), nanoseconds::zero());
        const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        const int ready =
            ::poll(polled.data(), stop >= 0 ? 2 : 1, deadline == never ? -1 : static_cast<int>(milliseconds));
        if (ready > 0) {
            return polled[1].revents == 0;
        }
        if (ready == 0 || errno != EINTR) {
            errno = ready == 0 ? ETIMEDOUT : errno;
            return false;
        }
    }
}

// Up to the end that the other side sets.
bool receiveAll(int file, std::string& text, nanoseconds deadline, int stop) {
    std::array<char, 4096> block{};
    while (waitFor(file, POLLIN, deadline, stop)) {
        const ssize_t got = ::recv(file, block.data(), block.size(), MSG_DONTWAIT);
        if (got == 0) {
            return true;
        }
        if (got < 0) {
            if (errno == EAGAIN || errno == EINTR) {
                continue;
            }
            return false;
        }
        text.append(block.data(), static_cast<std::size_t>(got));
        if (text.size() > longestLocalText) {
            errno = EMSGSIZE;
            return false;
        }
    }
    return false;
}

bool sendAll(int file, std::string_view text, nanoseconds deadline, int stop) {
    while (!text.empty()) {
        if (!waitFor(file, POLLOUT, deadline, stop)) {
            return false;
        }
        const ssize_t sent = ::send(file, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && errno != EAGAIN && errno != EINTR) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
    }
    return ::shutdown(file, SHUT_WR) == 0;
}

bool isOwnUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

Descriptor newSocket() {
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

} // namespace

struct LocalServer::State {
    Answer answer;
    Outcome outcome = success();
    std::unique_ptr<Address> address; // null: nobody is served
    Descriptor listening;
    Descriptor stopping{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::unique_ptr<Thread> thread;

    Outcome listen(const std::string& name) {
        auto place = std::make_unique<Address>(name);
        if (Outcome checked = checkedFolder(place->path.parent_path()); !checked) {
            return checked;
        }
        // What a process left that was killed is taken away; two that start at once do so one after the other.
        const FileLock alone(place->path.parent_path() / "lock");
        if (const Descriptor probe = newSocket();
            ::connect(probe.number(), place->get(), sizeof(sockaddr_un)) == 0 || errno == EAGAIN) {
            return Fault{textOf(place->path), 0, "is served by another process"};
        }
        ::unlink(place->path.c_str());
        listening = newSocket();
        if (!listening.isOpen() || ::bind(listening.number(), place->get(), sizeof(sockaddr_un)) != 0 ||
            ::chmod(place->path.c_str(), 0600) != 0 || ::listen(listening.number(), 8) != 0) {
            return place->fault(errno);
        }
        address = std::move(place);
        return success();
    }
    void serve() {
        setCurrentThreadName("tembrel-serve");
        while (waitFor(listening.number(), POLLIN, never, stopping.number())) {
            const Descriptor connection(::accept4(listening.number(), nullptr, nullptr, SOCK_CLOEXEC));
            if (!connection.isOpen()) { // out of descriptors: the asker still waits
                static_cast<void>(waitFor(stopping.number(), POLLIN, monotonicTime() + pauseWithoutDescriptors, -1));
                continue;
            }
            const auto deadline = monotonicTime() + patienceWithClients;
            std::string question;
            if (isOwnUser(connection.number()) &&
                receiveAll(connection.number(), question, deadline, stopping.number())) {
                const std::string text = answer(question);
                static_cast<void>(
                    sendAll(connection.number(), text, monotonicTime() + patienceWithClients, stopping.number()));
            }
        }
    }
};

LocalServer::LocalServer(const std::string& name, Answer answer) : state_(std::make_unique<State>()) {
    state_->answer = std::move(answer);
    state_->outcome = state_->listen(name);
    if (state_->outcome) {
        state_->thread = std::make_unique<Thread>([state = state_.get()] { state->serve(); });
        state_->thread->resume();
    }
}

LocalServer::~LocalServer() {
    ::eventfd_write(state_->stopping.number(), 1);
    state_->thread.reset();
    if (state_->address) {
        ::unlink(state_->address->path.c_str());
    }
}

const Outcome& LocalServer::state() const noexcept {
    return state_->outcome;
}

Result<std::optional<std::string>> askLocalServer(const std::string& name, const std::string& question,
                                                  std::chrono::milliseconds patience) {
    const Address address(name);
    if (std::error_code error; !std::filesystem::exists(address.path, error)) {
        return std::optional<std::string>();
    }
    if (const Outcome checked = checkedFolder(address.path.parent_path()); !checked) {
        return checked.fault();
    }
    const auto deadline = monotonicTime() + patience;
    const Descriptor connection = newSocket();
    if (::connect(connection.number(), address.get(), sizeof(sockaddr_un)) != 0) {
        if (errno == ECONNREFUSED || errno == ENOENT) {
            return std::optional<std::string>();
        }
        return address.fault(errno);
    }
    std::string answer;
    if (!sendAll(connection.number(), question, deadline, -1) ||
        !receiveAll(connection.number(), answer, deadline, -1)) {
        return address.fault(errno);
    }
    return std::optional(std::move(answer));
}

} // namespace Platform
