#include "platform/Notices.h"

#include "platform/SystemNotices.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace Platform {
namespace {

void writeToStandardError(std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written < 0 ? 0 : written));
    }
}

} // namespace

void systemDebugOutput(const std::string& line) noexcept {
    if (std::getenv("TEMBREL_TRACE") != nullptr) {
        writeToStandardError(line + '\n'); // one write, so that lines of several threads stay whole
    }
}

void systemMessageBox(const std::string& text, const std::string& caption) {
    writeToStandardError(caption.empty() ? text + '\n' : caption + ": " + text + '\n');
}

bool systemOpenDocument(const std::filesystem::path& document) {
    // The pipe closes when the program has started; when it could not be, a byte comes first.
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    const char* const arguments[] = {"xdg-open", document.c_str(), nullptr};
    const pid_t child = ::fork();
    if (child == 0) {
        // A grandchild runs the program: it belongs to nobody here, so that nobody has to wait for its end.
        const pid_t grandchild = ::fork();
        if (grandchild == 0) {
            ::setsid();
            ::execvp(arguments[0], const_cast<char* const*>(arguments));
        }
        if (grandchild <= 0) {
            static_cast<void>(!::write(ends[1], "x", 1));
        }
        ::_exit(0);
    }
    ::close(ends[1]);
    char failure = 0;
    ssize_t got = child < 0 ? 1 : -1;
    while (got < 0) {
        got = ::read(ends[0], &failure, 1);
        if (got < 0 && errno != EINTR) {
            break;
        }
    }
    ::close(ends[0]);
    while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return got == 0;
}

} // namespace Platform
