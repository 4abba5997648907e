// A folder of its own for a test, gone with it.
#pragma once

#include <filesystem>
#include <random>
#include <string>

class TemporaryFolder final {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() / ("tembrel-test-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};
