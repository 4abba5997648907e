// A settings store that lives in memory and remembers what was written to it.
#pragma once

#include "platform/SettingsStore.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

// Names and paths are matched exactly. Both roots are one.
class MemorySettings final : public Platform::SettingsStore {
public:
    using Values = std::map<std::string, Platform::SettingsValue>;

    std::map<std::string, Values> keys;
    bool opens = true;   // false: no key opens
    std::string refused; // writing to this key gives error 5

    // The names of the values written since the last call of this, in order.
    [[nodiscard]] std::vector<std::string> takeWritten() { return std::exchange(written_, {}); }

    std::unique_ptr<Platform::SettingsKey> openOrCreate(Platform::SettingsRoot, const std::string& path) override {
        return opens ? std::make_unique<Key>(keys[path], written_, path == refused) : nullptr;
    }
    std::unique_ptr<Platform::SettingsKey> open(Platform::SettingsRoot root, const std::string& path) override {
        return keys.contains(path) ? openOrCreate(root, path) : nullptr;
    }

private:
    class Key final : public Platform::SettingsKey {
    public:
        Key(Values& values, std::vector<std::string>& written, bool refuses)
            : values_(values), written_(written), refuses_(refuses) {}

        std::optional<Platform::SettingsValue> read(const std::string& name) override {
            const auto value = values_.find(name);
            return value == values_.end() ? std::nullopt : std::optional(value->second);
        }
        long write(const std::string& name, const Platform::SettingsValue& value) override {
            if (refuses_) {
                return 5;
            }
            values_[name] = value;
            written_.push_back(name);
            return 0;
        }
        bool remove(const std::string& name) override { return values_.erase(name) > 0; }
        std::vector<std::string> names() override {
            std::vector<std::string> result;
            for (const auto& [name, value] : values_) {
                result.push_back(name);
            }
            return result;
        }

    private:
        Values& values_;
        std::vector<std::string>& written_;
        bool refuses_;
    };

    std::vector<std::string> written_;
};

} // namespace TestSupport
