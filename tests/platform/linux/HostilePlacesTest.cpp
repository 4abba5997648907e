// Places that another user, or a careless one, has prepared: pipes where files belong, folders of sockets that are not
// ours.
#include "platform/Clocks.h"
#include "platform/LocalServer.h"
#include "platform/SafeFiles.h"
#include "platform/Threads.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Platform;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

mode_t modeOf(const fs::path& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

// Sockets belong into this folder while it lives.
class RuntimeFolder final {
public:
    RuntimeFolder() {
        if (const char* const before = std::getenv("XDG_RUNTIME_DIR")) {
            before_ = before;
        }
        ::setenv("XDG_RUNTIME_DIR", path().c_str(), 1);
    }
    ~RuntimeFolder() { before_ ? ::setenv("XDG_RUNTIME_DIR", before_->c_str(), 1) : ::unsetenv("XDG_RUNTIME_DIR"); }
    RuntimeFolder(const RuntimeFolder&) = delete;
    RuntimeFolder& operator=(const RuntimeFolder&) = delete;
    [[nodiscard]] fs::path path() const { return folder_.path(); }
    [[nodiscard]] fs::path sockets() const { return path() / "tembrel"; }

private:
    TemporaryFolder folder_;
    std::optional<std::string> before_;
};

std::string echo(const std::string& question) {
    return question;
}

} // namespace

TEST(HostilePlaces, APipeThatNobodyWritesIsAFaultInTime) {
    const TemporaryFolder folder;
    const fs::path pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto start = monotonicTime();
    EXPECT_FALSE(readWholeFile(pipe, 1000));
    EXPECT_LT(monotonicTime() - start, 20s); // and not for ever

    Thread writer([&pipe] { std::ofstream(pipe) << "content"; });
    writer.resume();
    const auto content = readWholeFile(pipe, 1000);
    EXPECT_TRUE(content && content.value() == "content");
    EXPECT_FALSE(readWholeFile("/dev/zero", 1000));
}

TEST(HostilePlaces, TheSocketIsItsUsersAlone) {
    const RuntimeFolder runtime;
    const LocalServer server("name", echo);
    ASSERT_TRUE(server.state()) << server.state().fault().text();
    EXPECT_EQ(modeOf(runtime.sockets()), 0700U);
    EXPECT_EQ(modeOf(runtime.sockets() / "name"), 0600U);
    const auto answer = askLocalServer("name", "?", 20s);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer.value(), "?");
}

TEST(HostilePlaces, AFolderThatOthersMayEnterHoldsNoSocket) {
    const RuntimeFolder runtime;
    const auto isRefused = [] {
        const LocalServer server("name", echo);
        return !server.state();
    };
    fs::create_directory(runtime.sockets());
    fs::permissions(runtime.sockets(), fs::perms{0755});
    EXPECT_TRUE(isRefused()) << "anybody may enter";
    fs::remove(runtime.sockets());
    fs::create_directory(runtime.path() / "elsewhere");
    fs::permissions(runtime.path() / "elsewhere", fs::perms{0700});
    fs::create_directory_symlink(runtime.path() / "elsewhere", runtime.sockets());
    EXPECT_TRUE(isRefused()) << "a link";
    fs::remove(runtime.sockets());
    std::ofstream(runtime.sockets()) << "a file";
    EXPECT_TRUE(isRefused()) << "a file";
}

TEST(HostilePlaces, ARuntimeFolderOfAnotherUserIsNotUsed) {
    const RuntimeFolder runtime;
    constexpr uid_t somebody = 12345;
    if (::chown(runtime.path().c_str(), somebody, somebody) != 0) {
        GTEST_SKIP() << "only root may give a folder away";
    }
    const LocalServer server("test-of-hostile-places-" + std::to_string(::getpid()), echo);
    EXPECT_TRUE(server.state()) << server.state().fault().text();
    EXPECT_FALSE(fs::exists(runtime.sockets()));
}

TEST(HostilePlaces, AQuestionWithoutEndIsCutOffAndOthersAreAnswered) {
    const RuntimeFolder runtime;
    int asked = 0;
    const LocalServer server("name", [&asked](const std::string& question) {
        ++asked;
        return question;
    });
    EXPECT_FALSE(askLocalServer("name", std::string(2 * longestLocalText, 'x'), 20s));
    const auto answer = askLocalServer("name", "?", 20s);
    EXPECT_TRUE(answer && answer.value() == "?");
    EXPECT_EQ(asked, 1);
}
