// The presets of one kind of section: a file each, named after the preset.
#pragma once

#include "platform/Result.h"
#include "platform/XmlDocument.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Backend::Component {

// Stands for the section's built-in default where there is no file of that name.
inline constexpr std::string_view defaultPresetName = "000 - Default";

// Preset names are UTF-8 and must do as a file's name: neither empty, nor with a folder, nor with a character that some
// system forbids in names, nor the name of a device of some system. A name that does not do names no preset. [backend]
class PresetFolder final {
public:
    // `element` is the root of the files, `extension` the end of their names. The folder is made when the first preset
    // is written.
    PresetFolder(std::filesystem::path folder, std::string element, std::string extension = ".pst")
        : folder_(std::move(folder)), element_(std::move(element)), extension_(std::move(extension)) {}

    [[nodiscard]] bool exists(const std::string& name) const;
    // The names of all presets, in order; none where there is no folder.
    [[nodiscard]] std::vector<std::string> names() const;
    // The section of the preset.
    [[nodiscard]] Platform::Result<Platform::XmlElement> read(const std::string& name) const;
    // `section` is the text of the section at depth 0; a preset of that name is replaced.
    [[nodiscard]] Platform::Outcome write(const std::string& name, const std::string& section) const;
    [[nodiscard]] Platform::Outcome remove(const std::string& name) const;

    using Report = std::function<void(const Platform::Fault&)>;
    // The same for whoever can do no more than say what went wrong; true when it is done.
    bool write(const std::string& name, const std::string& section, const Report& report) const;
    bool remove(const std::string& name, const Report& report) const;

private:
    // Empty for a name that does not do.
    [[nodiscard]] std::filesystem::path fileOf(const std::string& name) const;

    std::filesystem::path folder_;
    std::string element_;
    std::string extension_;
};

} // namespace Backend::Component
