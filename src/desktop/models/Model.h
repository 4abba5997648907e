// A copy of one part of the backend's state: it learns by messages to the window and changes by messages to the
// backend.
#pragma once

#include "core/GuiMessageManager.h"
#include "core/MessageParameters.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>

namespace Desktop {

// [gui]
class Model : public QObject, public Backend::GuiMessageManager {
    Q_OBJECT

public:
    [[nodiscard]] bool wantMessage(std::uint32_t id) const final;
    void handleMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) final;

signals:
    void changed();

protected:
    using Handler = std::function<void(std::uintptr_t wParam, std::intptr_t lParam)>;

    void on(std::uint32_t id, Handler handler);
    // For a message with a heap copy in wParam; 0 there is a mere notice, passed over.
    template <typename Value, typename Work> void onCopy(std::uint32_t id, Work work) {
        handlers_[id] = [work](std::uintptr_t wParam, std::intptr_t) {
            if (auto copy = Backend::takeCopy<Value>(wParam)) {
                work(std::move(*copy));
            }
        };
    }

private:
    std::map<std::uint32_t, Handler> handlers_;
};

} // namespace Desktop
