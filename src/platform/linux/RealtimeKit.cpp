#include "platform/linux/RealtimeKit.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <dbus/dbus.h>
#include <dlfcn.h>
#include <memory>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

namespace Platform {

namespace {

constexpr const char* service = "org.freedesktop.RealtimeKit1";
constexpr const char* objectPath = "/org/freedesktop/RealtimeKit1";
constexpr int patience = 250; // milliseconds a call
constexpr std::int64_t wantedNiceLevel = -15;

// What we need of libdbus, loaded only where the kernel itself has refused.
struct BusLibrary {
    decltype(&::dbus_connection_open_private) open = nullptr;
    decltype(&::dbus_bus_register) sayHello = nullptr;
    decltype(&::dbus_connection_set_exit_on_disconnect) setExitOnDisconnect = nullptr;
    decltype(&::dbus_connection_close) close = nullptr;
    decltype(&::dbus_connection_unref) unref = nullptr;
    decltype(&::dbus_connection_send_with_reply_and_block) call = nullptr;
    decltype(&::dbus_message_new_method_call) newCall = nullptr;
    decltype(&::dbus_message_append_args) append = nullptr;
    decltype(&::dbus_message_unref) unrefMessage = nullptr;
    decltype(&::dbus_message_iter_init) openReply = nullptr;
    decltype(&::dbus_message_iter_get_arg_type) typeAt = nullptr;
    decltype(&::dbus_message_iter_recurse) openVariant = nullptr;
    decltype(&::dbus_message_iter_get_basic) valueAt = nullptr;

    // Null when the system has no libdbus. Stays loaded to the end of the program. [any]
    [[nodiscard]] static const BusLibrary* get();
};

template <typename Function> bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

std::optional<BusLibrary> load() {
    void* const library = dlopen("libdbus-1.so.3", RTLD_NOW | RTLD_LOCAL);
    BusLibrary bus;
    const bool complete = library != nullptr && find(library, "dbus_connection_open_private", bus.open) &&
                          find(library, "dbus_bus_register", bus.sayHello) &&
                          find(library, "dbus_connection_set_exit_on_disconnect", bus.setExitOnDisconnect) &&
                          find(library, "dbus_connection_close", bus.close) &&
                          find(library, "dbus_connection_unref", bus.unref) &&
                          find(library, "dbus_connection_send_with_reply_and_block", bus.call) &&
                          find(library, "dbus_message_new_method_call", bus.newCall) &&
                          find(library, "dbus_message_append_args", bus.append) &&
                          find(library, "dbus_message_unref", bus.unrefMessage) &&
                          find(library, "dbus_message_iter_init", bus.openReply) &&
                          find(library, "dbus_message_iter_get_arg_type", bus.typeAt) &&
                          find(library, "dbus_message_iter_recurse", bus.openVariant) &&
                          find(library, "dbus_message_iter_get_basic", bus.valueAt);
    return complete ? std::optional(bus) : std::nullopt;
}

const BusLibrary* BusLibrary::get() {
    static const std::optional<BusLibrary> library = load();
    return library ? &*library : nullptr;
}

// One connection to the system's bus, for the few calls that one thread makes.
class SystemBus final {
public:
    explicit SystemBus(const BusLibrary& library) : library_(library) {
        const char* const given = secure_getenv("DBUS_SYSTEM_BUS_ADDRESS");
        connection_ = library.open(given != nullptr ? given : "unix:path=/var/run/dbus/system_bus_socket", nullptr);
        if (connection_ != nullptr) {
            library_.setExitOnDisconnect(connection_, FALSE); // else a bus that goes away would end the program
            if (library_.sayHello(connection_, nullptr) == FALSE) {
                close();
            }
        }
    }
    ~SystemBus() { close(); }
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    [[nodiscard]] std::optional<std::int64_t> property(const char* name) const {
        const Message call = newCall("org.freedesktop.DBus.Properties", "Get");
        if (!call || library_.append(call.get(), DBUS_TYPE_STRING, &service, DBUS_TYPE_STRING, &name,
                                     DBUS_TYPE_INVALID) == FALSE) {
            return std::nullopt;
        }
        const Message reply = send(call);
        DBusMessageIter outer{};
        DBusMessageIter inner{};
        if (!reply || library_.openReply(reply.get(), &outer) == FALSE ||
            library_.typeAt(&outer) != DBUS_TYPE_VARIANT) {
            return std::nullopt;
        }
        library_.openVariant(&outer, &inner);
        switch (library_.typeAt(&inner)) {
        case DBUS_TYPE_INT32: {
            dbus_int32_t value = 0;
            library_.valueAt(&inner, &value);
            return value;
        }
        case DBUS_TYPE_INT64: {
            dbus_int64_t value = 0;
            library_.valueAt(&inner, &value);
            return value;
        }
        default:
            return std::nullopt;
        }
    }

    // True when the service has done as asked, for the calling thread.
    template <typename Value> [[nodiscard]] bool ask(const char* method, int type, Value value) const {
        const auto thread = static_cast<dbus_uint64_t>(gettid());
        const Message call = newCall(service, method);
        return call &&
               library_.append(call.get(), DBUS_TYPE_UINT64, &thread, type, &value, DBUS_TYPE_INVALID) != FALSE &&
               send(call) != nullptr;
    }

private:
    using Message = std::unique_ptr<DBusMessage, decltype(&::dbus_message_unref)>;

    [[nodiscard]] Message newCall(const char* interface, const char* method) const {
        return {connection_ == nullptr ? nullptr : library_.newCall(service, objectPath, interface, method),
                library_.unrefMessage};
    }
    [[nodiscard]] Message send(const Message& call) const { // null for an error as well
        return {library_.call(connection_, call.get(), patience, nullptr), library_.unrefMessage};
    }

    void close() {
        if (connection_ != nullptr) {
            library_.close(connection_);
            library_.unref(connection_);
            connection_ = nullptr;
        }
    }

    const BusLibrary& library_;
    DBusConnection* connection_ = nullptr; // null: nobody answers there
};

bool limitComputingTime(std::int64_t microseconds) {
    rlimit limit{};
    if (microseconds <= 0 || getrlimit(RLIMIT_RTTIME, &limit) != 0) {
        return false;
    }
    limit.rlim_max = std::min<rlim_t>(limit.rlim_max, static_cast<rlim_t>(microseconds));
    limit.rlim_cur = limit.rlim_max;
    return setrlimit(RLIMIT_RTTIME, &limit) == 0;
}

} // namespace

bool askForRealtime(int priority) noexcept {
    const BusLibrary* const library = BusLibrary::get();
    if (library == nullptr) {
        return false;
    }
    const SystemBus bus(*library);
    const std::optional<std::int64_t> highest = bus.property("MaxRealtimePriority");
    const std::optional<std::int64_t> computingTime = bus.property("RTTimeUSecMax");
    return highest && *highest >= 1 && computingTime && limitComputingTime(*computingTime) &&
           bus.ask("MakeThreadRealtime", DBUS_TYPE_UINT32,
                   static_cast<dbus_uint32_t>(std::min<std::int64_t>(priority, *highest)));
}

bool askForHighPriority() noexcept {
    const BusLibrary* const library = BusLibrary::get();
    if (library == nullptr) {
        return false;
    }
    const SystemBus bus(*library);
    const std::optional<std::int64_t> lowest = bus.property("MinNiceLevel");
    return lowest && *lowest < 0 &&
           bus.ask("MakeThreadHighPriority", DBUS_TYPE_INT32,
                   static_cast<dbus_int32_t>(std::max<std::int64_t>(wantedNiceLevel, *lowest)));
}

} // namespace Platform
