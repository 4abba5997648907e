#include "host/live/DownKeys.h"

namespace Host {

std::optional<KeyEvent> DownKeys::admit(const KeyEvent& event) {
    if (event.press == Press::up) {
        return keys_.erase(event.key.getCode()) > 0 ? std::optional(event) : std::nullopt;
    }
    const bool isNew = keys_.insert_or_assign(event.key.getCode(), event.key).second;
    return KeyEvent{event.key, isNew ? Press::down : Press::repeat};
}

std::vector<KeyEvent> DownKeys::liftAll() {
    std::vector<KeyEvent> lifted;
    for (const auto& [code, key] : keys_) {
        lifted.push_back({key, Press::up});
    }
    keys_.clear();
    return lifted;
}

} // namespace Host
