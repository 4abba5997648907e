#include "backend/FileCheck.h"

#include "backend/ProgramXml.h"
#include "core/FolderNames.h"
#include "generators/SequenceXml.h"
#include "input/PresetFolder.h"
#include "platform/PathText.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace Backend {

namespace fs = std::filesystem;
using Platform::Fault;
using Platform::XmlElement;

namespace {

std::vector<const ElementFormat*> rootsOf(std::string_view extension) {
    std::vector<const ElementFormat*> roots;
    for (const FileKind& kind : fileKinds()) {
        if (kind.extension == extension) {
            return kind.roots;
        }
        roots.insert(roots.end(), kind.roots.begin(), kind.roots.end());
    }
    return roots;
}

std::string namesOf(const std::vector<const ElementFormat*>& roots) {
    std::string names;
    for (const ElementFormat* const root : roots) {
        names += (names.empty() ? "<" : ", <") + std::string(root->name) + ">";
    }
    return names;
}

// The application's data that the file belongs to.
fs::path dataOf(const fs::path& file, const fs::path& applicationData) {
    std::error_code unknown;
    const fs::path folder = fs::absolute(file, unknown).lexically_normal().parent_path();
    const std::string name = Platform::textOf(folder.filename());
    const bool isOurs = std::any_of(FolderNames::withFactoryContent.begin(), FolderNames::withFactoryContent.end(),
                                    [&](const char* each) { return name == each; });
    return isOurs ? folder.parent_path() : applicationData;
}

// Sequences have an extension of their own.
bool isThere(const fs::path& folder, const std::string& name) {
    const char* const extension = folder.filename() == FolderNames::sequences ? ".seq" : ".pst";
    return Component::PresetFolder(folder, {}, extension).exists(name);
}

} // namespace

const std::vector<FileKind>& fileKinds() {
    static const std::vector<FileKind> kinds = [] {
        const std::vector<ElementFormat>& files = programFileFormats();
        std::vector<FileKind> all = {{".prg", {&files[0], &files[1]}}, {".bnk", {&files[2]}}, {".pst", {}}};
        for (const ElementFormat& section : programFormat().children) {
            all.back().roots.push_back(&section);
        }
        all.push_back({".seq", {&SequenceManagement::sequenceFileFormat()}});
        return all;
    }();
    return kinds;
}

std::vector<Fault> checkFile(const fs::path& file, const fs::path& applicationData) {
    const std::string name = Platform::textOf(file);
    const Platform::Result<XmlElement> root = Platform::readXmlFile(file);
    if (!root) {
        return {root.fault()};
    }
    const std::vector<const ElementFormat*> roots = rootsOf(Platform::textOf(file.extension()));
    const auto format = std::find_if(roots.begin(), roots.end(),
                                     [&](const ElementFormat* each) { return each->name == root.value().name; });
    if (format == roots.end()) {
        return {{name, root.value().line, "the root element is <" + root.value().name + ">, not " + namesOf(roots)}};
    }
    std::vector<Fault> faults;
    if (*format == &SequenceManagement::sequenceFileFormat()) {
        SequenceManagement::checkSequenceFile(root.value(), name, faults);
        return faults;
    }
    const bool holdsPrograms = !(*format)->children.empty() && (*format)->children.front().name == "Program";
    if (holdsPrograms && root.value().child("Program") == nullptr) {
        faults.push_back({name, root.value().line, "there is no <Program>"});
    }
    const fs::path data = dataOf(file, applicationData);
    checkElement(root.value(), **format, name, faults, [&](std::string_view folder, const std::string& preset) {
        return preset == Component::defaultPresetName || isThere(data / folder, preset);
    });
    return faults;
}

} // namespace Backend
