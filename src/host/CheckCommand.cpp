#include "host/CheckCommand.h"

#include "backend/FileCheck.h"
#include "core/Surroundings.h"
#include "platform/PathText.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace Host {

namespace fs = std::filesystem;

namespace {

bool isOurs(const fs::path& file) {
    const auto& kinds = Backend::fileKinds();
    return std::any_of(kinds.begin(), kinds.end(), [extension = Platform::textOf(file.extension())](const auto& kind) {
        return kind.extension == extension;
    });
}

// The file, or all of our files in a folder and below it, by name.
std::vector<fs::path> filesOf(const fs::path& path) {
    std::error_code failure;
    if (!fs::is_directory(path, failure)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator file(path, failure), end; !failure && file != end; file.increment(failure)) {
        std::error_code unknown;
        if (isOurs(file->path()) && file->is_regular_file(unknown)) {
            files.push_back(file->path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

CheckCommand::CheckCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("check", "Say every fault of programs, banks, presets and sequences")) {
    verb_->add_option("FILE", files_, "Files, or folders with all files in them")->required();
    verb_->add_option("--data", data_, "Folder with the presets that the files name, instead of the user's")
        ->type_name("DIR");
}

int CheckCommand::run() {
    const fs::path data = data_ ? Platform::pathOf(*data_) : Backend::Surroundings::ofSystem().applicationData;
    bool isFine = true;
    for (const std::string& path : files_) {
        for (const fs::path& file : filesOf(Platform::pathOf(path))) {
            for (const Platform::Fault& fault : Backend::checkFile(file, data)) {
                std::cerr << fault.text() << '\n';
                isFine = false;
            }
        }
    }
    return isFine ? 0 : 1;
}

} // namespace Host
