#include "platform/LocalServer.h"

#include "platform/Clocks.h"
#include "platform/Threads.h"
#include "platform/win32/Handle.h"
#include "platform/win32/WideText.h"

#include <aclapi.h>
#include <algorithm>
#include <array>
#include <sddl.h>
#include <utility>
#include <vector>

namespace Platform {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

// For one who asks: to say what it wants and to take the answer.
constexpr nanoseconds patienceWithClients = 2s;
constexpr nanoseconds never = nanoseconds::max();
constexpr DWORD pipeBuffer = 64 * 1024;
constexpr DWORD pauseAfterFaults = 100; // milliseconds

// Memory that the system hands out.
struct LocalFreer {
    void operator()(void* memory) const { LocalFree(memory); }
};
template <typename Content> using LocalMemory = std::unique_ptr<Content, LocalFreer>;

// The user's security identifier as text; empty when the system does not tell.
std::wstring ownUser() {
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) {
        return {};
    }
    const Handle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> buffer(size);
    wchar_t* text = nullptr;
    if (GetTokenInformation(token.get(), TokenUser, buffer.data(), size, &size) == 0 ||
        ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(buffer.data())->User.Sid, &text) == 0) {
        return {};
    }
    const LocalMemory<wchar_t> owned(text);
    return text;
}

std::wstring pipeName(const std::string& name) {
    return L"\\\\.\\pipe\\tembrel-" + ownUser() + L"-" + wideOf(name);
}

Fault faultOf(const std::wstring& pipe, DWORD error) {
    return {bytesOf(pipe), 0, textOfSystemError(error)};
}

// Anybody may have made a pipe of that name before us.
bool isOwnPipe(HANDLE pipe) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(pipe, SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr, nullptr,
                        &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const LocalMemory<void> ownedDescriptor(descriptor);
    wchar_t* text = nullptr;
    if (owner == nullptr || ConvertSidToStringSidW(owner, &text) == 0) {
        return false;
    }
    const LocalMemory<wchar_t> ownedText(text);
    return text == ownUser();
}

// One transfer at a time over a pipe that was opened for overlapped work.
class Transfer final {
public:
    // Waits for a transfer that has begun (or failed to) until the deadline or a signal on `stop`; gives the system's
    // error number. The transfer is over then.
    DWORD finish(HANDLE pipe, bool begun, nanoseconds deadline, HANDLE stop) {
        const DWORD error = begun ? ERROR_SUCCESS : GetLastError();
        if (!begun && error != ERROR_IO_PENDING) {
            return error;
        }
        const auto left = std::max(deadline - monotonicTime(), nanoseconds::zero());
        const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        const std::array<HANDLE, 2> waited{event_.get(), stop};
        const DWORD woken = WaitForMultipleObjects(stop != nullptr ? 2 : 1, waited.data(), FALSE,
                                                   deadline == never ? INFINITE : static_cast<DWORD>(milliseconds));
        if (woken != WAIT_OBJECT_0) {
            CancelIo(pipe);
        }
        const bool whole = GetOverlappedResult(pipe, &overlapped_, &count_, TRUE) != 0;
        return woken != WAIT_OBJECT_0 ? WAIT_TIMEOUT : whole ? ERROR_SUCCESS : GetLastError();
    }
    [[nodiscard]] OVERLAPPED* begin() {
        ResetEvent(event_.get());
        overlapped_ = {};
        overlapped_.hEvent = event_.get();
        return &overlapped_;
    }
    [[nodiscard]] DWORD count() const { return count_; }

private:
    Handle event_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    OVERLAPPED overlapped_{};
    DWORD count_ = 0;
};

// One message of the pipe, which its reader sees as a whole.
DWORD receive(HANDLE pipe, std::string& text, nanoseconds deadline, HANDLE stop) {
    Transfer transfer;
    std::array<char, 4096> block{};
    for (;;) {
        const bool begun = ReadFile(pipe, block.data(), block.size(), nullptr, transfer.begin()) != 0;
        DWORD error = begun ? ERROR_SUCCESS : GetLastError();
        if (begun || error == ERROR_IO_PENDING || error == ERROR_MORE_DATA) {
            error = transfer.finish(pipe, begun || error == ERROR_MORE_DATA, deadline, stop);
        }
        if (error != ERROR_SUCCESS && error != ERROR_MORE_DATA) {
            return error;
        }
        text.append(block.data(), transfer.count());
        if (error == ERROR_SUCCESS) {
            return ERROR_SUCCESS;
        }
        if (text.size() > longestLocalText) {
            return ERROR_BAD_LENGTH;
        }
    }
}

DWORD send(HANDLE pipe, const std::string& text, nanoseconds deadline, HANDLE stop) {
    Transfer transfer;
    const bool begun = WriteFile(pipe, text.data(), static_cast<DWORD>(text.size()), nullptr, transfer.begin()) != 0;
    return transfer.finish(pipe, begun, deadline, stop);
}

} // namespace

struct LocalServer::State {
    Answer answer;
    Outcome outcome = success();
    Handle stopping{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::unique_ptr<Handle> pipe;
    std::unique_ptr<Thread> thread;

    Outcome listen(const std::string& name) {
        const std::wstring user = ownUser();
        const std::wstring place = pipeName(name);
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        if (user.empty() ||
            ConvertStringSecurityDescriptorToSecurityDescriptorW((L"O:" + user + L"D:P(A;;GA;;;" + user + L")").c_str(),
                                                                 SDDL_REVISION_1, &descriptor, nullptr) == 0) {
            return faultOf(place, GetLastError());
        }
        const LocalMemory<void> owned(descriptor);
        SECURITY_ATTRIBUTES onlyUs{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
        pipe = std::make_unique<Handle>(
            CreateNamedPipeW(place.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                             PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
                             pipeBuffer, pipeBuffer, 0, &onlyUs));
        if (!pipe->isValid()) {
            return faultOf(place, GetLastError());
        }
        return success();
    }
    void serve() {
        setCurrentThreadName("tembrel-serve");
        for (;;) {
            Transfer connecting;
            const bool begun = ConnectNamedPipe(pipe->get(), connecting.begin()) != 0;
            if (begun || GetLastError() != ERROR_PIPE_CONNECTED) {
                const DWORD error = connecting.finish(pipe->get(), begun, never, stopping.get());
                if (error == WAIT_TIMEOUT) {
                    return;
                }
                if (error != ERROR_SUCCESS && error != ERROR_NO_DATA && // one that has gone again
                    WaitForSingleObject(stopping.get(), pauseAfterFaults) != WAIT_TIMEOUT) {
                    return;
                }
            }
            std::string question;
            if (receive(pipe->get(), question, monotonicTime() + patienceWithClients, stopping.get()) ==
                ERROR_SUCCESS) {
                const std::string text = answer(question);
                const auto deadline = monotonicTime() + patienceWithClients;
                std::string nothing;
                // What is not read yet is lost with the connection: until the asker has gone.
                if (send(pipe->get(), text, deadline, stopping.get()) == ERROR_SUCCESS) {
                    static_cast<void>(receive(pipe->get(), nothing, deadline, stopping.get()));
                }
            }
            DisconnectNamedPipe(pipe->get());
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
    SetEvent(state_->stopping.get());
    state_->thread.reset();
}

const Outcome& LocalServer::state() const noexcept {
    return state_->outcome;
}

Result<std::optional<std::string>> askLocalServer(const std::string& name, const std::string& question,
                                                  std::chrono::milliseconds patience) {
    const std::wstring place = pipeName(name);
    const auto deadline = monotonicTime() + patience;
    const auto open = [&place] {
        return CreateFileW(place.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                           FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
    };
    HANDLE opened = open();
    while (opened == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY && monotonicTime() < deadline) {
        WaitNamedPipeW(place.c_str(), 50);
        opened = open();
    }
    const DWORD openError = GetLastError();
    const Handle pipe(opened);
    if (!pipe.isValid()) {
        if (openError == ERROR_FILE_NOT_FOUND) {
            return std::optional<std::string>();
        }
        return faultOf(place, openError);
    }
    if (!isOwnPipe(pipe.get())) {
        return faultOf(place, ERROR_ACCESS_DENIED);
    }
    DWORD mode = PIPE_READMODE_MESSAGE;
    SetNamedPipeHandleState(pipe.get(), &mode, nullptr, nullptr);
    std::string answer;
    DWORD error = send(pipe.get(), question, deadline, nullptr);
    if (error == ERROR_SUCCESS) {
        error = receive(pipe.get(), answer, deadline, nullptr);
    }
    if (error != ERROR_SUCCESS) {
        return faultOf(place, error);
    }
    return std::optional(std::move(answer));
}

} // namespace Platform
