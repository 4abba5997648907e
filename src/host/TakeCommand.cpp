#include "host/TakeCommand.h"

#include "backend/RecorderSection.h"
#include "core/QelUtils.h"
#include "core/RegistrySettings.h"
#include "core/Surroundings.h"
#include "generators/recording/BufferFiles.h"
#include "generators/recording/RecordContent.h"
#include "generators/recording/RecordFolder.h"
#include "host/OptionChecks.h"
#include "platform/LocalServer.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <vector>

namespace Host {

namespace fs = std::filesystem;
namespace Recording = Backend::Recording;
using Platform::Fault;
using Platform::Result;

namespace {

constexpr std::chrono::seconds patience{30};

// "1:02.5".
std::string lengthText(std::uint64_t milliseconds) {
    char text[40];
    std::snprintf(text, sizeof text, "%llu:%02u.%u", static_cast<unsigned long long>(milliseconds / 60'000),
                  static_cast<unsigned>(milliseconds / 1000 % 60), static_cast<unsigned>(milliseconds / 100 % 10));
    return text;
}

std::string counted(std::uint64_t count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// By the clock on the wall.
std::string startText(std::int64_t milliseconds) {
    const auto seconds = static_cast<std::time_t>(milliseconds / 1000);
    const std::tm* const local = std::localtime(&seconds); // this thread alone asks
    char text[40] = "?";
    if (local != nullptr) {
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", local);
    }
    return text;
}

void print(const std::vector<Recording::Take>& takes) {
    for (std::size_t i = 0; i < takes.size(); ++i) {
        std::cout << takes.size() - i << '\t' << startText(takes[i].start) << '\t'
                  << lengthText(takes[i].ticks * Recording::tickMilliseconds) << '\t' << counted(takes[i].notes, "note")
                  << '\n';
    }
    if (takes.empty()) {
        std::cerr << "nothing has been played\n";
    }
}

// What no program holds any more.
Result<TakeAnswer> answerFrom(const fs::path& folder, const TakeQuestion& question, bool mayClear) {
    TakeAnswer answer;
    const std::vector<Recording::Take> takes = Recording::takesIn(folder);
    if (question.list) {
        answer.takes = takes;
        return answer;
    }
    const auto saved = Recording::saveRecord(folder, takes, question.target, question.fromLast);
    if (!saved) {
        return saved.fault();
    }
    answer.saved = saved.value();
    if (mayClear && !question.fromLast) {
        Recording::BufferFiles buffers(folder);
        if (const auto cleared = buffers.clear(); !cleared) {
            return cleared.fault();
        }
    }
    return answer;
}

} // namespace

TakeCommand::TakeCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("take", "Save what was played as a MIDI file")) {
    verb_->add_option("OUTPUT", target_, "The MIDI file to write");
    verb_->add_flag("--list", list_, "List the takes, parted by 5 s of silence; the last one is number 1");
    verb_->add_option("--last", fromLast_, "Save only this take; 1 is the last one")->type_name("N")->check(atLeast(1));
    verb_->add_flag("--previous", previous_, "Of the program before the last one that was started");
    verb_->add_option("--data", data_, "Folder for the program's data and settings, instead of the user's")
        ->type_name("DIR");
}

int TakeCommand::run() {
    if (list_ == target_.has_value() || (list_ && fromLast_)) {
        std::cerr << "tembrel take: either a MIDI file to write, or --list\n";
        return 2;
    }
    TakeQuestion question{.list = list_, .fromLast = fromLast_, .target = {}};
    if (target_) {
        question.target = fs::absolute(*target_);
    }
    const auto answer = ask(question);
    if (!answer) {
        std::cerr << answer.fault().text() << '\n';
        return 1;
    }
    if (list_) {
        print(answer.value().takes);
    } else if (const auto& saved = answer.value().saved; saved.written) {
        std::cout << *target_ << ": " << counted(saved.events, "event") << ", " << counted(saved.notes, "note") << ", "
                  << lengthText(saved.milliseconds) << '\n';
    } else {
        std::cerr << "nothing has been played: no file is written\n";
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}

Result<TakeAnswer> TakeCommand::ask(const TakeQuestion& question) const {
    const auto surroundings = data_ ? Backend::Surroundings::inFolder(*data_) : Backend::Surroundings::ofSystem();
    Backend::RegistrySettings settings;
    settings.loadFromRegistry(*surroundings.settings, Backend::QelUtils::getMainRegistryKey());
    const fs::path buffers = Backend::RecorderSection::folderOf(settings, surroundings);
    if (previous_) {
        return answerFrom(Recording::RecordFolder::previous(buffers), question, false);
    }
    const std::vector<fs::path> folders = Recording::RecordFolder::all(buffers);
    for (const fs::path& folder : folders) {
        const auto answer =
            Platform::askLocalServer(Recording::RecordFolder::serverName(folder), textOf(question), patience);
        if (!answer) {
            return answer.fault();
        }
        if (answer.value()) {
            return readTakeAnswer(*answer.value());
        }
    }
    if (std::any_of(folders.begin(), folders.end(), Recording::RecordFolder::isHeld)) {
        return Fault{"", 0, "the program that runs cannot be asked; end it to save what was played"};
    }
    if (const auto folder = Recording::RecordFolder::lastUsed(buffers)) {
        return answerFrom(folder->path(), question, true);
    }
    return TakeAnswer{};
}

} // namespace Host
