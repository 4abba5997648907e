#include "platform/SettingsStore.h"

#include "platform/win32/WideText.h"

#include <windows.h>

namespace Platform {
namespace {

class KeyHandle final {
public:
    explicit KeyHandle(HKEY key) noexcept : key_(key) {}
    ~KeyHandle() { RegCloseKey(key_); }
    KeyHandle(const KeyHandle&) = delete;
    KeyHandle& operator=(const KeyHandle&) = delete;
    HKEY get() const noexcept { return key_; }

private:
    HKEY key_;
};

// The registry keeps these in UTF-16; we in bytes.
bool isText(DWORD kind) {
    return kind == REG_SZ || kind == REG_EXPAND_SZ || kind == REG_MULTI_SZ;
}

class RegistryKey final : public SettingsKey {
public:
    explicit RegistryKey(HKEY key) noexcept : key_(key) {}

    std::optional<SettingsValue> read(const std::string& name) override {
        const std::wstring wideName = wideOf(name);
        DWORD kind = 0;
        DWORD size = 0;
        std::vector<std::byte> data;
        LONG outcome = RegQueryValueExW(key_.get(), wideName.c_str(), nullptr, &kind, nullptr, &size);
        // The value may grow between the two questions.
        do {
            data.resize(size);
            if (outcome == ERROR_SUCCESS || outcome == ERROR_MORE_DATA) {
                outcome = RegQueryValueExW(key_.get(), wideName.c_str(), nullptr, &kind,
                                           reinterpret_cast<BYTE*>(data.data()), &size);
            }
        } while (outcome == ERROR_MORE_DATA);
        if (outcome != ERROR_SUCCESS) {
            return {};
        }
        data.resize(size);
        if (isText(kind)) {
            const std::string text =
                bytesOf({reinterpret_cast<const wchar_t*>(data.data()), data.size() / sizeof(wchar_t)});
            const auto* const bytes = reinterpret_cast<const std::byte*>(text.data());
            data.assign(bytes, bytes + text.size());
        }
        return SettingsValue{static_cast<SettingsKind>(kind), std::move(data)};
    }

    long write(const std::string& name, const SettingsValue& value) override {
        const auto kind = static_cast<DWORD>(value.kind);
        const auto store = [&](const void* data, std::size_t size) {
            return RegSetValueExW(key_.get(), wideOf(name).c_str(), 0, kind, static_cast<const BYTE*>(data),
                                  static_cast<DWORD>(size));
        };
        if (!isText(kind)) {
            return store(value.data.data(), value.data.size());
        }
        std::wstring wide = wideOf({reinterpret_cast<const char*>(value.data.data()), value.data.size()});
        const std::size_t size = wide.size() * sizeof(wchar_t);
        // The system looks behind a text without its zero, and takes a zero that stands there.
        wide += L'x';
        return store(wide.data(), size);
    }

    bool remove(const std::string& name) override {
        return RegDeleteValueW(key_.get(), wideOf(name).c_str()) == ERROR_SUCCESS;
    }

    std::vector<std::string> names() override {
        constexpr DWORD longestName = 16'384; // with the zero
        std::wstring name(longestName, L'\0');
        std::vector<std::string> result;
        for (DWORD index = 0;; ++index) {
            DWORD length = longestName;
            if (RegEnumValueW(key_.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
                ERROR_SUCCESS) {
                return result;
            }
            result.push_back(bytesOf({name.data(), length}));
        }
    }

private:
    KeyHandle key_;
};

HKEY keyOf(SettingsRoot root) {
    return root == SettingsRoot::currentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

class Registry final : public SettingsStore {
public:
    std::unique_ptr<SettingsKey> openOrCreate(SettingsRoot root, const std::string& path) override {
        HKEY key = nullptr;
        return RegCreateKeyExW(keyOf(root), wideOf(path).c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key,
                               nullptr) == ERROR_SUCCESS
                   ? std::make_unique<RegistryKey>(key)
                   : nullptr;
    }

    std::unique_ptr<SettingsKey> open(SettingsRoot root, const std::string& path) override {
        // A key of the machine may be there to read only: then writing says so.
        for (const REGSAM access : {REGSAM{KEY_READ | KEY_WRITE}, REGSAM{KEY_READ}}) {
            HKEY key = nullptr;
            if (RegOpenKeyExW(keyOf(root), wideOf(path).c_str(), 0, access, &key) == ERROR_SUCCESS) {
                return std::make_unique<RegistryKey>(key);
            }
        }
        return nullptr;
    }
};

} // namespace

std::unique_ptr<SettingsStore> systemSettingsStore() {
    return std::make_unique<Registry>();
}

} // namespace Platform
