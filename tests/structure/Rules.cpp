#include "structure/Rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <optional>
#include <string_view>

namespace Structure {

namespace {

// From the ground up.
constexpr std::array<std::string_view, 11> floors{"platform",  "values", "core",    "generators", "midiengine", "input",
                                                  "midiinput", "gui",    "backend", "desktop",    "host"};

constexpr std::array<std::string_view, 16> systemMacros{
    "_WIN32",    "_WIN64",  "WIN32",         "WIN64",    "__WIN32__", "__MINGW32__", "__MINGW64__", "__CYGWIN__",
    "__linux__", "__linux", "__gnu_linux__", "__unix__", "__unix",    "__APPLE__",   "__FreeBSD__", "_MSC_VER"};

struct Include {
    std::size_t line;
    bool quoted;
    std::string name;
};

bool isWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return text;
}

// What follows '#' in a preprocessor line; nothing for other lines.
std::optional<std::string_view> directive(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    const auto hash = line.find_first_not_of(blanks);
    if (hash == std::string_view::npos || line[hash] != '#') {
        return std::nullopt;
    }
    const auto word = line.find_first_not_of(blanks, hash + 1);
    return word == std::string_view::npos ? std::string_view() : line.substr(word);
}

std::vector<Include> includes(const SourceTree::Lines& lines) {
    std::vector<Include> found;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto text = directive(lines[i]);
        if (!text || !text->starts_with("include")) {
            continue;
        }
        const auto open = text->find_first_of("\"<");
        const auto close = open == std::string_view::npos ? open : text->find_first_of("\">", open + 1);
        if (close != std::string_view::npos) {
            found.push_back({i + 1, (*text)[open] == '"', std::string(text->substr(open + 1, close - open - 1))});
        }
    }
    return found;
}

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string floorOf(const std::string& path) {
    const auto slash = path.find('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::size_t heightOf(const std::string& floor) {
    return static_cast<std::size_t>(std::find(floors.begin(), floors.end(), floor) - floors.begin());
}

// The file of the tree that an include means, as the compiler finds it: beside the file, then from src/ on.
std::optional<std::string> resolve(const SourceTree& src, const std::string& from, const Include& include) {
    const auto beside = (std::filesystem::path(folderOf(from)) / include.name).lexically_normal().generic_string();
    if (include.quoted && src.contains(beside)) {
        return beside;
    }
    const auto fromRoot = std::filesystem::path(include.name).lexically_normal().generic_string();
    return src.contains(fromRoot) ? std::optional(fromRoot) : std::nullopt;
}

bool isSystemSide(const std::string& path) {
    return path.starts_with("platform/linux/") || path.starts_with("platform/win32/");
}

bool hasWord(std::string_view text, std::string_view word) {
    for (auto at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const auto end = at + word.size();
        if ((at == 0 || !isWordCharacter(text[at - 1])) && (end == text.size() || !isWordCharacter(text[end]))) {
            return true;
        }
    }
    return false;
}

bool isSource(const std::string& path) {
    return path.ends_with(".h") || path.ends_with(".cpp");
}

// "Part" with a number like "1-2", a dot for the dash, in lower case.
bool numbersPart(std::string_view line) {
    constexpr std::string_view word = "part ";
    for (auto at = line.find(word); at != std::string_view::npos; at = line.find(word, at + 1)) {
        auto i = at + word.size();
        const auto first = i;
        while (i < line.size() && isDigit(line[i])) {
            ++i;
        }
        if (i > first && i + 1 < line.size() && line[i] == '.' && isDigit(line[i + 1]) &&
            (at == 0 || !isWordCharacter(line[at - 1]))) {
            return true;
        }
    }
    return false;
}

// A standard's own document may be named: "MIDI 1.0 ...".
bool namesStandard(std::string_view line) {
    constexpr std::array<std::string_view, 6> standards{"midi", "smf", "xdg", "xml", "jack", "unicode"};
    return std::any_of(standards.begin(), standards.end(), [&](auto name) { return hasWord(line, name); });
}

// In pieces, so that this file keeps the rule itself.
std::optional<std::string> strayWord(std::string_view line) {
    constexpr std::string_view paper = "speci"
                                       "fication";
    constexpr std::string_view shortPaper = "sp"
                                            "ec";
    constexpr std::string_view neighbour = "sha"
                                           "red/";
    constexpr std::string_view here = "/wo"
                                      "rk/";
    if (hasWord(line, paper) && !namesStandard(line)) {
        return "names a paper that is not here";
    }
    if (hasWord(line, shortPaper)) {
        return "names a paper that is not here, in short";
    }
    if (numbersPart(line)) {
        return "refers to a numbered part of a paper";
    }
    for (auto at = line.find(neighbour); at != std::string_view::npos; at = line.find(neighbour, at + 1)) {
        if (at == 0 || !isWordCharacter(line[at - 1])) {
            return "refers to a folder beside the repository";
        }
    }
    if (line.find(here) != std::string_view::npos) {
        return "names a path of one machine";
    }
    return std::nullopt;
}

} // namespace

std::string Fault::text() const {
    return file + ":" + std::to_string(line) + ": " + reason;
}

Faults upwardIncludes(const SourceTree& src) {
    Faults faults;
    for (const auto& [path, lines] : src.files()) {
        if (!isSource(path)) {
            continue;
        }
        const std::string from = floorOf(path);
        if (heightOf(from) == floors.size()) {
            faults.push_back({path, 0, "lies on no floor"});
            continue;
        }
        for (const Include& include : includes(lines)) {
            const auto target = resolve(src, path, include);
            if (!target) {
                if (include.quoted) {
                    faults.push_back({path, include.line, "no such file: " + include.name});
                }
                continue;
            }
            const std::string to = floorOf(*target);
            const bool upward = heightOf(to) > heightOf(from);
            const bool pastFacade = from == "desktop" && to == "backend";
            const bool pastPlatform = from != "platform" && isSystemSide(*target);
            if (upward || pastFacade || pastPlatform) {
                faults.push_back({path, include.line, from + " must not include " + *target});
            }
        }
    }
    return faults;
}

Faults includeCycles(const SourceTree& src) {
    enum class State { unseen, open, done };
    Faults faults;
    std::map<std::string, State> states;
    std::vector<std::string> road;
    const std::function<void(const std::string&)> visit = [&](const std::string& path) {
        states[path] = State::open;
        road.push_back(path);
        for (const Include& include : includes(src.files().at(path))) {
            const auto target = resolve(src, path, include);
            if (!target) {
                continue;
            }
            if (states[*target] == State::unseen) {
                visit(*target);
            } else if (states[*target] == State::open) {
                std::string cycle;
                for (auto step = std::find(road.begin(), road.end(), *target); step != road.end(); ++step) {
                    cycle += *step + " -> ";
                }
                faults.push_back({path, include.line, "cycle: " + cycle + *target});
            }
        }
        road.pop_back();
        states[path] = State::done;
    };
    for (const auto& [path, lines] : src.files()) {
        if (isSource(path) && states[path] == State::unseen) {
            visit(path);
        }
    }
    return faults;
}

Faults systemConditions(const SourceTree& src) {
    Faults faults;
    for (const auto& [path, lines] : src.files()) {
        if (floorOf(path) == "platform") {
            continue;
        }
        bool inCondition = false; // a condition may go on over lines that end in a backslash
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const auto text = directive(lines[i]);
            inCondition = inCondition || (text && (text->starts_with("if") || text->starts_with("elif")));
            if (inCondition) {
                for (const auto macro : systemMacros) {
                    if (hasWord(lines[i], macro)) {
                        faults.push_back({path, i + 1, "condition on " + std::string(macro) + " outside platform/"});
                    }
                }
            }
            inCondition = inCondition && lines[i].ends_with('\\');
        }
    }
    return faults;
}

Faults toolkitIncludes(const SourceTree& src) {
    const auto isToolkit = [](const std::string& name) {
        const bool camel = name.size() > 1 && name[0] == 'Q' && std::isupper(static_cast<unsigned char>(name[1])) != 0;
        const bool module = name.starts_with("Qt");
        const bool plain = name.starts_with("q") && name.ends_with(".h");
        return camel || module || plain;
    };
    Faults faults;
    for (const auto& [path, lines] : src.files()) {
        if (floorOf(path) == "desktop") {
            continue;
        }
        for (const Include& include : includes(lines)) {
            if (isToolkit(include.name) && !resolve(src, path, include)) {
                faults.push_back({path, include.line, "Qt header outside desktop/: " + include.name});
            }
        }
    }
    return faults;
}

Faults longFiles(const SourceTree& src) {
    constexpr std::size_t longest = 600;
    constexpr std::size_t top = 20;
    Faults faults;
    for (const auto& [path, lines] : src.files()) {
        const auto end = lines.begin() + static_cast<std::ptrdiff_t>(std::min(top, lines.size()));
        const bool excused =
            std::any_of(lines.begin(), end, [](const auto& line) { return line.starts_with("// Long because: "); });
        if (lines.size() > longest && !excused) {
            faults.push_back({path, 0, std::to_string(lines.size()) + " lines without \"// Long because: \""});
        }
    }
    return faults;
}

Faults strayReferences(const SourceTree& repository) {
    Faults faults;
    for (const auto& [path, lines] : repository.files()) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (const auto reason = strayWord(lowered(lines[i]))) {
                faults.push_back({path, i + 1, *reason});
            }
        }
    }
    return faults;
}

} // namespace Structure
