#include "backend/QelFactory.h"

#include "backend/QelBackend.h"

namespace Backend {

std::unique_ptr<QelIF> QelFactory::createQel(const std::string& name, MidiEngine::MidiPlayer& player, bool traceToFile,
                                             const Surroundings& surroundings) {
    return std::make_unique<QelBackend>(name, player, traceToFile, surroundings);
}

} // namespace Backend
