#include "e2e/HeldThread.h"

#include "e2e/RunningProgram.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <utility>

namespace {

pid_t threadOf(pid_t program, const std::string& name) {
    const std::filesystem::path tasks = "/proc/" + std::to_string(program) + "/task";
    std::error_code error;
    for (const auto& task : std::filesystem::directory_iterator(tasks, error)) {
        std::string found;
        std::getline(std::ifstream(task.path() / "comm"), found);
        if (found == name) {
            return std::stoi(task.path().filename().string());
        }
    }
    return -1;
}

constexpr int systemCall = SIGTRAP | 0x80;

} // namespace

HeldThread::HeldThread(pid_t program, const std::string& thread, std::string file) : file_(std::move(file)) {
    const pid_t found = threadOf(program, thread);
    if (found > 0 && ptrace(PTRACE_SEIZE, found, nullptr, PTRACE_O_TRACESYSGOOD) == 0 &&
        ptrace(PTRACE_INTERRUPT, found, nullptr, nullptr) == 0 && waitpid(found, nullptr, __WALL) == found &&
        ptrace(PTRACE_SYSCALL, found, nullptr, nullptr) == 0) {
        thread_ = found;
    }
}

HeldThread::~HeldThread() {
    if (isFollowed() && !isHeld_) { // it can be let go of only where it stands
        ptrace(PTRACE_INTERRUPT, thread_, nullptr, nullptr);
        waitpid(thread_, nullptr, __WALL);
    }
    ptrace(PTRACE_DETACH, thread_, nullptr, nullptr);
}

bool HeldThread::isHeld() {
    return eventually([this] {
        int status = 0;
        while (!isHeld_ && waitpid(thread_, &status, __WALL | WNOHANG) == thread_ && WIFSTOPPED(status)) {
            isHeld_ = WSTOPSIG(status) == systemCall && opensTheFile();
            if (!isHeld_) {
                ptrace(PTRACE_SYSCALL, thread_, nullptr, nullptr);
            }
        }
        return isHeld_;
    });
}

bool HeldThread::opensTheFile() const {
    __ptrace_syscall_info call{};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, thread_, sizeof call, &call) <= 0 || call.op != PTRACE_SYSCALL_INFO_ENTRY ||
        call.entry.nr != SYS_openat) {
        return false;
    }
    std::string path(512, '\0');
    const iovec here{path.data(), path.size()};
    const iovec there{reinterpret_cast<void*>(call.entry.args[1]), path.size()};
    const ssize_t got = process_vm_readv(thread_, &here, 1, &there, 1, 0);
    path.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return std::string(path.c_str()).find(file_) != std::string::npos;
}
