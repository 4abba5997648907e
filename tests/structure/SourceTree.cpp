#include "structure/SourceTree.h"

#include <fstream>
#include <iterator>
#include <sstream>

namespace Structure {

namespace fs = std::filesystem;

SourceTree SourceTree::read(const fs::path& folder) {
    SourceTree tree;
    for (auto entry = fs::recursive_directory_iterator(folder); entry != fs::recursive_directory_iterator(); ++entry) {
        const std::string name = entry->path().filename().generic_string();
        const bool made = entry.depth() == 0 && (name == "build" || name == ".git" || name == ".cache");
        if (entry->is_symlink() || made) {
            entry.disable_recursion_pending();
            continue;
        }
        if (!entry->is_regular_file()) {
            continue;
        }
        std::ifstream in(entry->path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        if (text.find('\0') == std::string::npos) {
            tree.add(entry->path().lexically_relative(folder).generic_string(), text);
        }
    }
    return tree;
}

void SourceTree::add(const std::string& path, const std::string& text) {
    Lines lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        lines.push_back(line);
    }
    files_[path] = std::move(lines);
}

} // namespace Structure
