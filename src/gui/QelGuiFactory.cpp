#include "gui/QelGuiFactory.h"

#include <mutex>
#include <utility>

namespace Gui {

namespace {

struct Registered {
    std::mutex mutex;
    QelGuiFactory::Builder builder;
};

Registered& registered() {
    static Registered instance;
    return instance;
}

} // namespace

void QelGuiFactory::setBuilder(Builder builder) {
    const std::lock_guard lock(registered().mutex);
    registered().builder = std::move(builder);
}

std::unique_ptr<QelGuiIF> QelGuiFactory::createQelGui(Backend::QelIF& backend,
                                                      const Backend::RegistrySettings& settings,
                                                      const std::vector<Backend::MidiInputPort>& inputs,
                                                      const std::vector<Backend::MidiOutputPort>& outputs,
                                                      const SequencePresetList& sequences, bool isPlugin) {
    const std::lock_guard lock(registered().mutex);
    return registered().builder ? registered().builder(backend, settings, inputs, outputs, sequences, isPlugin)
                                : nullptr;
}

} // namespace Gui
