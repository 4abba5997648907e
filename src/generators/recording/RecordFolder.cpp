#include "generators/recording/RecordFolder.h"

#include "generators/recording/BufferFiles.h"
#include "generators/recording/RecordContent.h"
#include "platform/PathText.h"

#include <cstdint>
#include <system_error>
#include <utility>

namespace Backend::Recording {

namespace fs = std::filesystem;

namespace {

constexpr int mostPrograms = 32;

fs::path folderOf(const fs::path& buffers, int number) {
    return number == 1 ? buffers : buffers / ("_" + std::to_string(number));
}

fs::path lockFile(const fs::path& folder) {
    return folder / "_lock";
}

void keepPrevious(const fs::path& folder) {
    const std::vector<fs::path> files = BufferFiles::list(folder);
    std::error_code error;
    std::uintmax_t bytes = 0;
    for (const fs::path& file : files) {
        const std::uintmax_t size = fs::file_size(file, error);
        bytes += error ? 0 : size;
    }
    if (bytes == 0) {
        return;
    }
    const fs::path previous = RecordFolder::previous(folder);
    fs::remove_all(previous, error);
    fs::create_directory(previous, error);
    for (const fs::path& file : files) {
        fs::rename(file, previous / file.filename(), error);
    }
    fs::rename(indexFile(folder), indexFile(previous), error);
}

} // namespace

RecordFolder::RecordFolder(fs::path path)
    : path_(std::move(path)), lock_(lockFile(path_), Platform::FileLock::Patience::none) {}

std::unique_ptr<RecordFolder> RecordFolder::claim(const fs::path& buffers) {
    for (int number = 1; number <= mostPrograms; ++number) {
        const fs::path path = folderOf(buffers, number);
        std::error_code error;
        fs::create_directories(path, error);
        if (error) {
            return nullptr;
        }
        std::unique_ptr<RecordFolder> folder(new RecordFolder(path));
        if (folder->lock_.isHeld()) {
            keepPrevious(path);
            return folder;
        }
    }
    return nullptr;
}

std::unique_ptr<RecordFolder> RecordFolder::lastUsed(const fs::path& buffers) {
    std::unique_ptr<RecordFolder> found;
    fs::file_time_type latest{};
    for (const fs::path& path : all(buffers)) {
        std::unique_ptr<RecordFolder> folder(new RecordFolder(path));
        const std::vector<fs::path> files = BufferFiles::list(path);
        std::error_code error;
        const auto time = files.empty() ? fs::file_time_type{} : fs::last_write_time(files.back(), error);
        if (!folder->lock_.isHeld() || files.empty() || error || (found && time <= latest)) {
            continue;
        }
        latest = time;
        found = std::move(folder);
    }
    return found;
}

bool RecordFolder::isHeld(const fs::path& folder) {
    const fs::path file = lockFile(folder);
    std::error_code error;
    return fs::exists(file, error) && !Platform::FileLock(file, Platform::FileLock::Patience::none).isHeld();
}

std::vector<fs::path> RecordFolder::all(const fs::path& buffers) {
    std::vector<fs::path> folders;
    for (int number = 1; number <= mostPrograms; ++number) {
        const fs::path path = folderOf(buffers, number);
        if (std::error_code error; fs::is_directory(path, error)) {
            folders.push_back(path);
        }
    }
    return folders;
}

std::string RecordFolder::serverName(const fs::path& folder) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(folder, error);
    std::uint64_t hash = 0xCBF29CE484222325ULL; // FNV-1a
    for (const char each : Platform::textOf(error ? folder : whole)) {
        hash = (hash ^ static_cast<unsigned char>(each)) * 0x100000001B3ULL;
    }
    std::string name = "take-";
    for (int shift = 60; shift >= 0; shift -= 4) {
        name += "0123456789abcdef"[hash >> shift & 0xF];
    }
    return name;
}

fs::path RecordFolder::previous(const fs::path& folder) {
    return folder / "_previous";
}

} // namespace Backend::Recording
