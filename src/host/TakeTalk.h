// What "tembrel take" asks of a running program, and what that answers.
#pragma once

#include "generators/recording/RetroRecord.h"
#include "platform/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

// Lists the takes, or saves the whole record or one take into a file, which is named in full.
struct TakeQuestion {
    bool list = false;
    std::optional<int> fromLast; // 1 is the last take
    std::filesystem::path target;

    bool operator==(const TakeQuestion&) const = default;
};
struct TakeAnswer {
    std::vector<Backend::Recording::Take> takes; // oldest first
    Backend::Recording::SavedRecord saved;
};

// As the text that travels, and back: nothing, or a fault, for a text that is none of ours. [any]
[[nodiscard]] std::string textOf(const TakeQuestion& question);
[[nodiscard]] std::optional<TakeQuestion> readTakeQuestion(std::string_view text);
[[nodiscard]] std::string textOf(const Platform::Result<TakeAnswer>& answer);
[[nodiscard]] Platform::Result<TakeAnswer> readTakeAnswer(std::string_view text);

// Asks the record, in this process.
[[nodiscard]] Platform::Result<TakeAnswer> answerTo(const TakeQuestion& question,
                                                    Backend::Recording::RetroRecord& record);

} // namespace Host
