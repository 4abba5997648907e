// The text files of a folder, by their path in it, split into lines.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Structure {

class SourceTree final {
public:
    using Lines = std::vector<std::string>;

    // Reads the folder with its subfolders. Left out: files with NUL bytes, and at the top level what is made there
    // (build folders, caches, the repository's own data).
    static SourceTree read(const std::filesystem::path& folder);

    // Paths with "/" between folders, from the tree's own folder on.
    void add(const std::string& path, const std::string& text);

    [[nodiscard]] const std::map<std::string, Lines>& files() const { return files_; }
    [[nodiscard]] bool contains(const std::string& path) const { return files_.count(path) != 0; }

private:
    std::map<std::string, Lines> files_;
};

} // namespace Structure
