// Where the backend gets its user interface from.
#pragma once

#include "gui/QelGui.h"

#include <functional>
#include <memory>
#include <vector>

namespace Gui {

class QelGuiFactory final {
public:
    using Builder = std::function<std::unique_ptr<QelGuiIF>(
        Backend::QelIF& backend, const Backend::RegistrySettings& settings,
        const std::vector<Backend::MidiInputPort>& inputs, const std::vector<Backend::MidiOutputPort>& outputs,
        const SequencePresetList& sequences, bool isPlugin)>;

    // A host that has a user interface registers it before it asks the backend for one; an empty one unregisters.
    // [host]
    static void setBuilder(Builder builder);

    // Null when nobody has registered one. The user interface keeps the reference to the backend and copies of what
    // else it needs. [backend]
    [[nodiscard]] static std::unique_ptr<QelGuiIF> createQelGui(Backend::QelIF& backend,
                                                                const Backend::RegistrySettings& settings,
                                                                const std::vector<Backend::MidiInputPort>& inputs,
                                                                const std::vector<Backend::MidiOutputPort>& outputs,
                                                                const SequencePresetList& sequences, bool isPlugin);
};

} // namespace Gui
