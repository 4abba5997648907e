#include "platform/LockPatience.h"
#include "platform/Notices.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/SettingsFormat.h"
#include "platform/SettingsStore.h"
#include "platform/Threads.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>

namespace Platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t maxSettingsBytes = std::size_t{16} * 1024 * 1024;

// What the keys of a store share.
struct SettingsTrouble {
    std::atomic<bool> saidUnkept = false; // that a file that is not understood cannot be kept aside
    std::atomic<bool> isLocked = false;   // by somebody who does not let go: only the first waits for that
};

// The file of one root. Nothing is kept between calls: what another process wrote is seen at once.
class SettingsFile final {
public:
    SettingsFile(const fs::path& folder, const char* name, std::shared_ptr<SettingsTrouble> trouble)
        : file_(folder / (std::string(name) + ".settings")), lockFile_(folder / (std::string(name) + ".lock")),
          trouble_(std::move(trouble)) {}

    // Hands the current content to `look`. False when the file cannot be read.
    bool read(const std::function<void(const SettingsTree&)>& look) const;
    // Lets `change` work on the current content and writes it back when `change` says so. 0 or an error number;
    // then the file is as it was.
    long update(const std::function<bool(SettingsTree&)>& change) const;

private:
    [[nodiscard]] std::unique_ptr<FileLock> lock() const;
    // Under the lock. Nothing when there is a file that cannot be read.
    std::optional<SettingsTree> load() const;
    // An empty tree when the file could be put out of the way.
    std::optional<SettingsTree> keepAside(const Fault& fault) const;

    fs::path file_;
    fs::path lockFile_;
    std::shared_ptr<SettingsTrouble> trouble_;
};

std::optional<SettingsTree> SettingsFile::load() const {
    std::error_code error;
    const fs::file_status status = fs::status(file_, error);
    if (status.type() == fs::file_type::not_found) {
        return SettingsTree{};
    }
    if (!fs::is_regular_file(status)) {
        return {};
    }
    const auto size = fs::file_size(file_, error);
    if (!error && size > maxSettingsBytes) {
        return keepAside({textOf(file_), 0, "is too big"});
    }
    const Result<std::string> text = readWholeFile(file_, maxSettingsBytes);
    if (!text) {
        writeDebugOutput("Settings: " + text.fault().text());
        return {};
    }
    Result<SettingsTree> tree = parseSettings(text.value(), textOf(file_));
    if (!tree) {
        return keepAside(tree.fault());
    }
    return std::move(tree.value());
}

std::optional<SettingsTree> SettingsFile::keepAside(const Fault& fault) const {
    fs::path aside;
    std::error_code error;
    int number = 0;
    do {
        aside = file_;
        aside += ".unreadable-" + std::to_string(++number);
    } while (fs::exists(aside, error));
    fs::rename(file_, aside, error);
    if (!error) {
        writeDebugOutput("Settings: " + fault.text() + "; the file is kept as " + textOf(aside));
        return SettingsTree{};
    }
    if (!trouble_->saidUnkept.exchange(true)) {
        writeDebugOutput("Settings: " + fault.text() + "; the file stays as it is: " + error.message());
    }
    return {};
}

std::unique_ptr<FileLock> SettingsFile::lock() const {
    std::error_code unknown;
    LockPatience patience(file_);
    auto lock = std::make_unique<FileLock>(lockFile_, FileLock::Patience::none);
    while (!lock->isHeld() && !trouble_->isLocked && patience.isLeft() && fs::exists(lockFile_, unknown)) {
        sleepMilliseconds(1);
        lock = std::make_unique<FileLock>(lockFile_, FileLock::Patience::none);
    }
    trouble_->isLocked = !lock->isHeld();
    return lock;
}

bool SettingsFile::read(const std::function<void(const SettingsTree&)>& look) const {
    // Where the lock cannot be had, nobody writes (a folder that is not ours to write in), or somebody holds it who
    // does not go on; and a file is replaced in one step.
    const auto held = lock();
    const std::optional<SettingsTree> tree = load();
    if (tree) {
        look(*tree);
    }
    return tree.has_value();
}

long SettingsFile::update(const std::function<bool(SettingsTree&)>& change) const {
    const auto held = lock();
    if (!held->isHeld()) {
        return EACCES;
    }
    std::optional<SettingsTree> tree = load();
    if (!tree) {
        return EIO;
    }
    if (!change(*tree)) {
        return 0;
    }
    const Outcome replaced = replaceFile(file_, formatSettings(*tree));
    if (!replaced) {
        writeDebugOutput("Settings: " + replaced.fault().text());
    }
    return replaced ? 0 : EIO;
}

class FileKey final : public SettingsKey {
public:
    FileKey(SettingsFile file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}

    std::optional<SettingsValue> read(const std::string& name) override {
        std::optional<SettingsValue> result;
        file_.read([&](const SettingsTree& tree) {
            const SettingsValues* const values = valuesIn(tree);
            const auto found = values == nullptr ? SettingsValues::const_iterator{} : values->find(name);
            if (values != nullptr && found != values->end()) {
                result = found->second;
            }
        });
        return result;
    }

    long write(const std::string& name, const SettingsValue& value) override {
        return file_.update([&](SettingsTree& tree) {
            SettingsValue& stored = tree.keys[path_][name];
            const bool isNew = stored != value;
            stored = value;
            return isNew;
        });
    }

    bool remove(const std::string& name) override {
        bool wasThere = false;
        const long error = file_.update([&](SettingsTree& tree) {
            const auto values = tree.keys.find(path_);
            wasThere = values != tree.keys.end() && values->second.erase(name) > 0;
            return wasThere;
        });
        return wasThere && error == 0;
    }

    std::vector<std::string> names() override {
        std::vector<std::string> result;
        file_.read([&](const SettingsTree& tree) {
            if (const SettingsValues* const values = valuesIn(tree)) {
                std::transform(values->begin(), values->end(), std::back_inserter(result),
                               [](const auto& entry) { return entry.first; });
            }
        });
        return result;
    }

private:
    const SettingsValues* valuesIn(const SettingsTree& tree) const {
        const auto key = tree.keys.find(path_);
        return key == tree.keys.end() ? nullptr : &key->second;
    }

    SettingsFile file_;
    std::string path_;
};

class FileStore final : public SettingsStore {
public:
    explicit FileStore(fs::path folder) : folder_(std::move(folder)) {
        std::error_code shownByTheFirstWrite;
        fs::create_directories(folder_, shownByTheFirstWrite);
    }

    std::unique_ptr<SettingsKey> openOrCreate(SettingsRoot root, const std::string& path) override {
        SettingsFile file = fileOf(root);
        const std::string key = keyPathOfParts(partsOfKeyPath(path, '\\'));
        const long error = file.update([&key](SettingsTree& tree) {
            const bool isNew = !tree.hasKey(key);
            if (isNew) {
                tree.keys[key];
            }
            return isNew;
        });
        return error == 0 ? std::make_unique<FileKey>(std::move(file), key) : nullptr;
    }

    std::unique_ptr<SettingsKey> open(SettingsRoot root, const std::string& path) override {
        SettingsFile file = fileOf(root);
        const std::string key = keyPathOfParts(partsOfKeyPath(path, '\\'));
        bool exists = false;
        file.read([&](const SettingsTree& tree) { exists = tree.hasKey(key); });
        return exists ? std::make_unique<FileKey>(std::move(file), key) : nullptr;
    }

private:
    SettingsFile fileOf(SettingsRoot root) const {
        return {folder_, root == SettingsRoot::currentUser ? "current-user" : "local-machine", trouble_};
    }

    fs::path folder_;
    std::shared_ptr<SettingsTrouble> trouble_ = std::make_shared<SettingsTrouble>();
};

} // namespace

std::unique_ptr<SettingsStore> fileSettingsStore(const fs::path& folder) {
    return std::make_unique<FileStore>(folder);
}

} // namespace Platform
