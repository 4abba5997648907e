// What is asked of RealtimeKit, as a service of our own on a bus of our own hears it.
#include "platform/linux/RealtimeKit.h"

#include "support/TemporaryFolder.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <dbus/dbus.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sched.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    return ends;
}

// A child process; ended and collected with this object.
class Child final {
public:
    template <typename Body> explicit Child(Body body) : id_(fork()) {
        if (id_ == 0) {
            body();
            _exit(126);
        }
    }
    ~Child() {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

private:
    pid_t id_;
};

struct Answer {
    bool realtime = false;
    bool highPriority = false;
    rlim_t computingTime = 0;
    pid_t thread = 0;
};

// Asks in a process of its own, since a limit that is lowered stays so.
class Asker final {
public:
    Asker(int priority, const std::string& bus)
        : go_(makePipe()), answer_(makePipe()), child_([this, priority, &bus] {
              char ignored = 0;
              if (read(go_[0], &ignored, 1) != 1) {
                  _exit(1);
              }
              setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.c_str(), 1);
              Answer answer{Platform::askForRealtime(priority), Platform::askForHighPriority(), 0, gettid()};
              rlimit limit{};
              getrlimit(RLIMIT_RTTIME, &limit);
              answer.computingTime = limit.rlim_max;
              _exit(write(answer_[1], &answer, sizeof answer) == sizeof answer ? 0 : 1);
          }) {}
    ~Asker() {
        for (const int end : {go_[0], go_[1], answer_[0]}) {
            close(end);
        }
    }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    void go() { // the child has the only writing end from here on
        EXPECT_EQ(write(go_[1], "g", 1), 1);
        close(answer_[1]);
    }
    // Null when the child has ended without one.
    [[nodiscard]] std::optional<Answer> answer() const {
        Answer answer;
        return read(answer_[0], &answer, sizeof answer) == sizeof answer ? std::optional(answer) : std::nullopt;
    }

private:
    std::array<int, 2> go_;
    std::array<int, 2> answer_;
    Child child_;
};

struct Heard {
    dbus_uint64_t realtimeThread = 0;
    dbus_uint32_t realtimePriority = 0;
    dbus_uint64_t highPriorityThread = 0;
    dbus_int32_t niceLevel = 0;
};

DBusMessage* answerProperty(DBusMessage* call) {
    const char* interface = nullptr;
    const char* name = nullptr;
    dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &interface, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID);
    const bool isTime = std::strcmp(name, "RTTimeUSecMax") == 0;
    const dbus_int64_t time = 150'000;
    const dbus_int32_t level = std::strcmp(name, "MinNiceLevel") == 0 ? -11 : 20;
    DBusMessage* const reply = dbus_message_new_method_return(call);
    DBusMessageIter outer{};
    DBusMessageIter inner{};
    dbus_message_iter_init_append(reply, &outer);
    dbus_message_iter_open_container(&outer, DBUS_TYPE_VARIANT, isTime ? "x" : "i", &inner);
    dbus_message_iter_append_basic(&inner, isTime ? DBUS_TYPE_INT64 : DBUS_TYPE_INT32,
                                   isTime ? static_cast<const void*>(&time) : &level);
    dbus_message_iter_close_container(&outer, &inner);
    return reply;
}

// Serves until the asker has answered or gone; `refuse`: nobody gets anything.
Heard serve(DBusConnection* bus, bool refuse) {
    Heard heard;
    for (int answers = 0; answers < 5 && dbus_connection_read_write(bus, 5000) != FALSE;) {
        while (DBusMessage* const call = dbus_connection_pop_message(bus)) {
            DBusMessage* reply = nullptr;
            if (dbus_message_is_method_call(call, "org.freedesktop.DBus.Properties", "Get") != FALSE) {
                reply = answerProperty(call);
            } else if (refuse && dbus_message_get_type(call) == DBUS_MESSAGE_TYPE_METHOD_CALL) {
                reply = dbus_message_new_error(call, DBUS_ERROR_ACCESS_DENIED, "no");
            } else if (dbus_message_has_member(call, "MakeThreadRealtime") != FALSE) {
                dbus_message_get_args(call, nullptr, DBUS_TYPE_UINT64, &heard.realtimeThread, DBUS_TYPE_UINT32,
                                      &heard.realtimePriority, DBUS_TYPE_INVALID);
                reply = dbus_message_new_method_return(call);
            } else if (dbus_message_has_member(call, "MakeThreadHighPriority") != FALSE) {
                dbus_message_get_args(call, nullptr, DBUS_TYPE_UINT64, &heard.highPriorityThread, DBUS_TYPE_INT32,
                                      &heard.niceLevel, DBUS_TYPE_INVALID);
                reply = dbus_message_new_method_return(call);
            }
            if (reply != nullptr) {
                dbus_connection_send(bus, reply, nullptr);
                dbus_connection_flush(bus);
                dbus_message_unref(reply);
                ++answers;
            }
            dbus_message_unref(call);
        }
    }
    return heard;
}

// A bus whose daemon listens once this exists; none where there is no dbus-daemon.
class Bus final {
public:
    explicit Bus(const std::filesystem::path& folder)
        : address_("unix:path=" + (folder / "bus").string()), ready_(makePipe()), daemon_([this, &folder] {
              const std::filesystem::path settings = folder / "bus.conf";
              std::ofstream(settings) << "<busconfig><type>custom</type><listen>" << address_
                                      << "</listen><policy context='default'><allow send_destination='*'/>"
                                         "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
              execlp("dbus-daemon", "dbus-daemon", "--nofork", ("--config-file=" + settings.string()).c_str(),
                     ("--print-address=" + std::to_string(ready_[1])).c_str(), static_cast<char*>(nullptr));
          }) {
        close(ready_[1]);
        char first = 0;
        listens_ = read(ready_[0], &first, 1) == 1;
        close(ready_[0]);
    }

    [[nodiscard]] bool listens() const { return listens_; }
    [[nodiscard]] const std::string& address() const { return address_; }

private:
    std::string address_;
    std::array<int, 2> ready_;
    bool listens_ = false;
    Child daemon_;
};

class RealtimeKit : public testing::TestWithParam<bool> {};

TEST_P(RealtimeKit, IsAskedForTheCallingThreadWithinItsLimits) {
    const TemporaryFolder folder;
    Asker asker(60, "unix:path=" + (folder.path() / "bus").string());
    const Bus daemon(folder.path());
    if (!daemon.listens()) {
        GTEST_SKIP() << "no dbus-daemon";
    }
    DBusConnection* const bus = dbus_connection_open_private(daemon.address().c_str(), nullptr);
    ASSERT_NE(bus, nullptr);
    ASSERT_NE(dbus_bus_register(bus, nullptr), FALSE);
    dbus_connection_set_exit_on_disconnect(bus, FALSE);
    ASSERT_EQ(dbus_bus_request_name(bus, "org.freedesktop.RealtimeKit1", 0, nullptr),
              DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER);

    const bool refuse = GetParam();
    asker.go();
    const Heard heard = serve(bus, refuse);
    const std::optional<Answer> answer = asker.answer();
    dbus_connection_close(bus);
    dbus_connection_unref(bus);

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->realtime, !refuse);
    EXPECT_EQ(answer->highPriority, !refuse);
    EXPECT_EQ(answer->computingTime, 150'000U);
    if (!refuse) {
        EXPECT_EQ(heard.realtimeThread, static_cast<dbus_uint64_t>(answer->thread));
        EXPECT_EQ(heard.realtimePriority, 20U);
        EXPECT_EQ(heard.highPriorityThread, static_cast<dbus_uint64_t>(answer->thread));
        EXPECT_EQ(heard.niceLevel, -11);
    }
}

INSTANTIATE_TEST_SUITE_P(Service, RealtimeKit, testing::Values(false, true),
                         [](const auto& row) { return row.param ? "Refuses" : "Grants"; });

TEST(RealtimeKitAbsent, IsNotWaitedFor) {
    const TemporaryFolder folder;
    Asker asker(60, "unix:path=" + (folder.path() / "nobody").string());
    asker.go();
    const std::optional<Answer> answer = asker.answer();
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->realtime || answer->highPriority);
    EXPECT_EQ(answer->computingTime, RLIM_INFINITY);
}

} // namespace
