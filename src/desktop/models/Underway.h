// The edits that the backend has not told of yet.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace Desktop {

// The backend tells of each edit some time after it was posted. What it tells of any but the last would set back what
// the user has in hand, so it is passed over. [gui]
template <typename Value> class Underway final {
public:
    void posted(Value value) {
        waiting_.push_back(std::move(value));
        if (waiting_.size() > most) {
            waiting_.pop_front();
        }
    }
    // Whether what the backend tells is an edit behind which another has been posted. What was never posted is news.
    [[nodiscard]] bool isOutdated(const Value& told) {
        const auto found = std::find(waiting_.begin(), waiting_.end(), told);
        if (found == waiting_.end()) {
            waiting_.clear();
            return false;
        }
        waiting_.erase(waiting_.begin(), found + 1);
        return !waiting_.empty();
    }

private:
    static constexpr std::size_t most = 256;

    std::deque<Value> waiting_; // the oldest first
};

} // namespace Desktop
