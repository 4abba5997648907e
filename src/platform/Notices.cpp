#include "platform/Notices.h"

#include "platform/SystemNotices.h"

#include <memory>
#include <mutex>

namespace Platform {
namespace {

// A function that any thread may exchange while others call it.
template <typename Function> class Exchangeable final {
public:
    void set(Function function) {
        auto next = function ? std::make_shared<const Function>(std::move(function)) : nullptr;
        const std::lock_guard guard(mutex_);
        function_.swap(next);
    }
    [[nodiscard]] std::shared_ptr<const Function> get() const {
        const std::lock_guard guard(mutex_);
        return function_;
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const Function> function_;
};

Exchangeable<std::function<void(const std::string&)>> debugOutputHandler;
Exchangeable<std::function<void(const std::string&, const std::string&)>> messageBoxHandler;

} // namespace

void writeDebugOutput(const std::string& line) noexcept {
    if (const auto handler = debugOutputHandler.get()) {
        (*handler)(line);
    } else {
        systemDebugOutput(line);
    }
}

void setDebugOutputHandler(std::function<void(const std::string&)> handler) {
    debugOutputHandler.set(std::move(handler));
}

void showMessageBox(const std::string& text, const std::string& caption) {
    if (const auto handler = messageBoxHandler.get()) {
        (*handler)(text, caption);
    } else {
        systemMessageBox(text, caption);
    }
}

void setMessageBoxHandler(std::function<void(const std::string&, const std::string&)> handler) {
    messageBoxHandler.set(std::move(handler));
}

bool openDocument(const std::filesystem::path& document) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(document, error);
    return !error && std::filesystem::exists(whole, error) && systemOpenDocument(whole);
}

} // namespace Platform
