#include "host/TakeTalk.h"

#include "platform/PathText.h"

#include <charconv>
#include <utility>

namespace Host {

using Backend::Recording::Take;
using Platform::Fault;
using Platform::Result;

namespace {

constexpr std::string_view listWord = "list\n";
constexpr std::string_view saveWord = "save ";
constexpr std::string_view takesWord = "takes\n";
constexpr std::string_view savedWord = "saved ";
constexpr std::string_view faultWord = "fault ";

// Takes a number and the character behind it; false when there is none.
template <typename Number> bool takeNumber(std::string_view& text, Number& number, char behind) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(read.ptr - text.data());
    if (read.ec != std::errc() || length >= text.size() || text[length] != behind) {
        return false;
    }
    text.remove_prefix(length + 1);
    return true;
}

bool takeWord(std::string_view& text, std::string_view word) {
    const bool found = text.starts_with(word);
    text.remove_prefix(found ? word.size() : 0);
    return found;
}

template <typename... Numbers> std::string line(Numbers... numbers) {
    std::string text;
    ((text += (text.empty() ? "" : " ") + std::to_string(numbers)), ...);
    return text + '\n';
}

} // namespace

std::string textOf(const TakeQuestion& question) {
    if (question.list) {
        return std::string(listWord);
    }
    return std::string(saveWord) + std::to_string(question.fromLast.value_or(0)) + '\n' +
           Platform::textOf(question.target);
}

std::optional<TakeQuestion> readTakeQuestion(std::string_view text) {
    if (text == listWord) {
        return TakeQuestion{.list = true, .fromLast = {}, .target = {}};
    }
    int number = 0;
    if (!takeWord(text, saveWord) || !takeNumber(text, number, '\n') || number < 0 || text.empty() ||
        text.find('\0') != text.npos) {
        return std::nullopt;
    }
    std::filesystem::path target = Platform::pathOf(text);
    if (target.empty()) { // on Windows also for bytes that are no text
        return std::nullopt;
    }
    return TakeQuestion{
        .list = false, .fromLast = number == 0 ? std::nullopt : std::optional(number), .target = std::move(target)};
}

std::string textOf(const Result<TakeAnswer>& answer) {
    if (!answer) {
        return std::string(faultWord) + std::to_string(answer.fault().file.size()) + '\n' + answer.fault().file +
               answer.fault().reason;
    }
    const auto& saved = answer.value().saved;
    std::string text = std::string(savedWord) +
                       line(saved.written ? 1 : 0, saved.events, saved.notes, saved.milliseconds) +
                       std::string(takesWord);
    for (const Take& take : answer.value().takes) {
        text += line(take.begin, take.end, take.start, take.ticks, take.notes);
    }
    return text;
}

Result<TakeAnswer> readTakeAnswer(std::string_view text) {
    const Fault foreign{"", 0, "the program that runs gives an answer that is not understood"};
    std::size_t length = 0;
    if (takeWord(text, faultWord)) {
        if (!takeNumber(text, length, '\n') || length > text.size()) {
            return foreign;
        }
        return Fault{std::string(text.substr(0, length)), 0, std::string(text.substr(length))};
    }
    TakeAnswer answer;
    int written = 0;
    auto& saved = answer.saved;
    if (!takeWord(text, savedWord) || !takeNumber(text, written, ' ') || !takeNumber(text, saved.events, ' ') ||
        !takeNumber(text, saved.notes, ' ') || !takeNumber(text, saved.milliseconds, '\n') ||
        !takeWord(text, takesWord)) {
        return foreign;
    }
    saved.written = written != 0;
    while (!text.empty()) {
        Take take;
        if (!takeNumber(text, take.begin, ' ') || !takeNumber(text, take.end, ' ') ||
            !takeNumber(text, take.start, ' ') || !takeNumber(text, take.ticks, ' ') ||
            !takeNumber(text, take.notes, '\n')) {
            return foreign;
        }
        answer.takes.push_back(take);
    }
    return answer;
}

Result<TakeAnswer> answerTo(const TakeQuestion& question, Backend::Recording::RetroRecord& record) {
    TakeAnswer answer;
    if (question.list) {
        answer.takes = record.takes();
        return answer;
    }
    const auto saved = record.save(question.target, question.fromLast);
    if (!saved) {
        return saved.fault();
    }
    answer.saved = saved.value();
    return answer;
}

} // namespace Host
