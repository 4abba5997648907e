// Replacing a file while the process is killed, and on a file system without room.
#include "platform/SafeFiles.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Platform;
using TestSupport::contentOf;
namespace fs = std::filesystem;

namespace {

// Runs `work` in a process of its own and kills that before its system call number `call`; false when the work was
// done before.
template <typename Work> bool killBeforeCall(int call, Work work) {
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    for (int stops = 0; WIFSTOPPED(status); ++stops) {
        if (stops == 2 * call) { // one stop before and one behind each call
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return true;
        }
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    return false;
}

bool canTrace() {
    const pid_t child = fork();
    if (child == 0) {
        _exit(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// A file system of that many bytes, as long as it lives.
class TinyFileSystem final {
public:
    explicit TinyFileSystem(const fs::path& folder, const std::string& size) : folder_(folder) {
        fs::create_directories(folder);
        isThere_ = mount("none", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
    }
    ~TinyFileSystem() {
        if (isThere_) {
            umount(folder_.c_str());
        }
    }
    TinyFileSystem(const TinyFileSystem&) = delete;
    TinyFileSystem& operator=(const TinyFileSystem&) = delete;
    [[nodiscard]] bool isThere() const { return isThere_; }
    [[nodiscard]] bool setReadOnly() {
        return mount("none", folder_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    fs::path folder_;
    bool isThere_ = false;
};

} // namespace

TEST(DiskTrouble, AKillAtAnyMomentLeavesTheOldFileOrTheNew) {
    if (!canTrace()) {
        GTEST_SKIP() << "processes may not be traced here";
    }
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    const std::string before(30'000, 'a');
    const std::string after(90'000, 'b');
    int old = 0;
    int replaced = 0;
    for (int call = 1;; ++call) {
        ASSERT_TRUE(replaceFile(file, before));
        const bool killed = killBeforeCall(call, [&] { static_cast<void>(replaceFile(file, after)); });
        const std::string now = contentOf(file);
        ASSERT_TRUE(now == before || now == after) << "call " << call << ", " << now.size() << " bytes";
        ++(now == before ? old : replaced);
        if (!killed) {
            EXPECT_EQ(now, after);
            break;
        }
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1); // nothing is left
    EXPECT_GT(old, 4); // open, write, flush, close, rename
    EXPECT_GT(replaced, 1);
}

TEST(DiskTrouble, AFullFileSystemKeepsTheOldFile) {
    const TemporaryFolder folder;
    TinyFileSystem disk(folder.path() / "disk", "64k");
    if (!disk.isThere()) {
        GTEST_SKIP() << "no file system may be mounted here";
    }
    const fs::path file = folder.path() / "disk" / "file";
    const std::string before(20'000, 'a');
    ASSERT_TRUE(replaceFile(file, before));
    for (const std::size_t size : {50'000U, 70'000U, 1'000'000U}) {
        const Outcome outcome = replaceFile(file, std::string(size, 'b'));
        ASSERT_FALSE(outcome) << size;
        EXPECT_EQ(outcome.fault().reason, "No space left on device");
        EXPECT_EQ(contentOf(file), before);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "disk"), fs::directory_iterator()), 1);
    }
    EXPECT_TRUE(replaceFile(file, std::string(40'000, 'c')));
    ASSERT_TRUE(disk.setReadOnly());
    const Outcome outcome = replaceFile(file, "d");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.fault().reason, "Read-only file system");
    EXPECT_EQ(contentOf(file), std::string(40'000, 'c'));
}
