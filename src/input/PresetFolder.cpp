#include "input/PresetFolder.h"

#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "values/XmlWriter.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <system_error>

namespace Backend::Component {

namespace {

// Windows takes these for devices, whatever follows a dot, a colon or blanks behind them.
bool isDeviceName(std::string_view name) {
    std::string first(name.substr(0, name.find('.')));
    first.erase(first.find_last_not_of(' ') + 1);
    std::transform(first.begin(), first.end(), first.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    constexpr std::array<std::string_view, 6> whole{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    if (std::find(whole.begin(), whole.end(), first) != whole.end()) {
        return true;
    }
    constexpr std::array<std::string_view, 13> ports{"0", "1", "2", "3",        "4",        "5",       "6",
                                                     "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return (first.starts_with("COM") || first.starts_with("LPT")) &&
           std::find(ports.begin(), ports.end(), std::string_view(first).substr(3)) != ports.end();
}

bool isFileName(std::string_view name) {
    const auto forbidden = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 ||
               std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos;
    };
    return !name.empty() && std::none_of(name.begin(), name.end(), forbidden) && !isDeviceName(name);
}

Platform::Fault noPreset(const std::filesystem::path& folder, const std::string& name) {
    return {Platform::textOf(folder), 0, "there is no preset \"" + name + "\""};
}

} // namespace

std::filesystem::path PresetFolder::fileOf(const std::string& name) const {
    if (!isFileName(name)) {
        return {};
    }
    const std::string file = name + extension_;
    return folder_ / std::u8string(file.begin(), file.end());
}

bool PresetFolder::exists(const std::string& name) const {
    const std::filesystem::path file = fileOf(name);
    std::error_code failure;
    return !file.empty() && std::filesystem::is_regular_file(file, failure);
}

std::vector<std::string> PresetFolder::names() const {
    std::vector<std::string> names;
    std::error_code failure;
    for (std::filesystem::directory_iterator file(folder_, failure), end; !failure && file != end;
         file.increment(failure)) {
        std::string name = Platform::textOf(file->path().filename());
        if (name.size() > extension_.size() && name.ends_with(extension_)) {
            name.resize(name.size() - extension_.size());
            if (exists(name)) {
                names.push_back(std::move(name));
            }
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

Platform::Result<Platform::XmlElement> PresetFolder::read(const std::string& name) const {
    if (!exists(name)) {
        return noPreset(folder_, name);
    }
    Platform::Result<Platform::XmlElement> section = Platform::readXmlFile(fileOf(name));
    if (section && section.value().name != element_) {
        return Platform::Fault{Platform::textOf(fileOf(name)), section.value().line,
                               "the root element is <" + section.value().name + ">, not <" + element_ + ">"};
    }
    return section;
}

Platform::Outcome PresetFolder::write(const std::string& name, const std::string& section) const {
    const std::filesystem::path file = fileOf(name);
    if (file.empty()) {
        return Platform::Fault{Platform::textOf(folder_), 0, "\"" + name + "\" cannot be the name of a preset"};
    }
    std::error_code failure; // a folder that cannot be made is met again by the writing
    std::filesystem::create_directories(folder_, failure);
    std::ostringstream text;
    XmlWriter(text).declaration();
    text << section;
    return Platform::replaceFile(file, text.str());
}

Platform::Outcome PresetFolder::remove(const std::string& name) const {
    std::error_code failure;
    if (!exists(name) || !std::filesystem::remove(fileOf(name), failure)) {
        return noPreset(folder_, name);
    }
    return Platform::success();
}

namespace {
bool isDone(const Platform::Outcome& outcome, const PresetFolder::Report& report) {
    if (!outcome) {
        report(outcome.fault());
    }
    return static_cast<bool>(outcome);
}
} // namespace

bool PresetFolder::write(const std::string& name, const std::string& section, const Report& report) const {
    return isDone(write(name, section), report);
}

bool PresetFolder::remove(const std::string& name, const Report& report) const {
    return isDone(remove(name), report);
}

} // namespace Backend::Component
