// The sequences that the user has, by name.
#pragma once

#include "gui/GuiCopies.h"
#include "input/PresetFolder.h"
#include "midiengine/LayerList.h"
#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace Backend::SequenceManagement {

// Each sequence's XML text is an element "Sequence".
using SequencePresetList = Gui::SequencePresetList;

// A file ("NAME.seq") each. [backend]
class SequencePresetManager final {
public:
    // `reportFault` outlives the manager; the folder need not exist.
    SequencePresetManager(std::filesystem::path folder, const std::function<void(const Platform::Fault&)>& reportFault);

    // The sequence of that name: its file, read once, else one of the built-in ones; null when there is neither, and,
    // with a report, when the file cannot be read.
    [[nodiscard]] std::shared_ptr<const Sequence> find(const std::string& name);
    // Gives each layer the steps that its sequence's name stands for.
    void resolve(Layers::LayerList& layers);
    // Files are read again from now on.
    void forget() { known_.clear(); }

    // Writes a sequence, replacing one of that name; its text is the element "Sequence" or the steps alone. What is not
    // well-formed and what cannot be written is reported and changes nothing.
    void add(const std::string& name, const std::string& text);
    void remove(const std::string& name);

    // All files that can be read.
    [[nodiscard]] SequencePresetList list() const;
    // Another number after each change of the files.
    [[nodiscard]] std::uint32_t revision() const { return revision_; }

private:
    [[nodiscard]] std::shared_ptr<const Sequence> read(const std::string& name) const;

    Component::PresetFolder folder_;
    const std::function<void(const Platform::Fault&)>& reportFault_;
    std::map<std::string, std::shared_ptr<const Sequence>> known_; // null: there is none
    std::uint32_t revision_ = 0;
};

} // namespace Backend::SequenceManagement
