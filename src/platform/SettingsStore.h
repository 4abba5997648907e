// The store of user and machine settings: keys that hold named, typed values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

enum class SettingsRoot { currentUser, localMachine };

// The kinds of values, with the numbers that Windows gives them.
enum class SettingsKind : std::uint32_t { string = 1, bytes = 3, number = 4 };

// A value as it is stored: a string with its terminating zero, a number as four little-endian bytes.
struct SettingsValue {
    SettingsKind kind = SettingsKind::bytes;
    std::vector<std::byte> data;

    [[nodiscard]] static SettingsValue ofString(const std::string& text);
    [[nodiscard]] static SettingsValue ofNumber(std::uint32_t number);
    bool operator==(const SettingsValue&) const = default;
};

// An open key. Value names are matched without regard to case, as Windows does. Used by one thread.
class SettingsKey {
public:
    virtual ~SettingsKey() = default;
    // The value as stored, whatever its kind; nothing when there is none or it cannot be read.
    [[nodiscard]] virtual std::optional<SettingsValue> read(const std::string& name) = 0;
    // 0, or the system's error number.
    [[nodiscard]] virtual long write(const std::string& name, const SettingsValue& value) = 0;
    // False when there was no such value or it could not be removed.
    virtual bool remove(const std::string& name) = 0;
    [[nodiscard]] virtual std::vector<std::string> names() = 0;
};

// Opens keys by path; the parts of a path are separated by backslashes.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    // Opens a key, creating it where needed; null when that fails. [any]
    [[nodiscard]] virtual std::unique_ptr<SettingsKey> openOrCreate(SettingsRoot root, const std::string& path) = 0;
    // Opens an existing key; null when it does not exist or cannot be opened. [any]
    [[nodiscard]] virtual std::unique_ptr<SettingsKey> open(SettingsRoot root, const std::string& path) = 0;
};

// The system's own store: the registry on Windows, files under the user's configuration folder elsewhere.
[[nodiscard]] std::unique_ptr<SettingsStore> systemSettingsStore();

// A store of one text file a root in `folder`, which is created where needed. Every write replaces the file in one
// step and sees what other processes wrote before; a file that cannot be understood is kept aside under another
// name, said once on the debug output, and the store starts empty.
[[nodiscard]] std::unique_ptr<SettingsStore> fileSettingsStore(const std::filesystem::path& folder);

} // namespace Platform
