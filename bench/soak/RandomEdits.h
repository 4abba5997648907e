// What somebody at the window might do to the program while it plays, the same again for the same seed.
#pragma once

#include "midiengine/Layer.h"

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Soak {

class RandomEdits final {
public:
    // `data`: the folder of application data. Whoever uses the edits has that many ports.
    RandomEdits(std::uint64_t seed, std::filesystem::path data, int inputs, int outputs);

    // Posts one edit; it has been done when the backend has taken in what was posted.
    void post(Backend::QelIF& qel);
    // Files that edits have written since the last call, take files among them.
    [[nodiscard]] std::vector<std::filesystem::path> takeWritten();

private:
    [[nodiscard]] int number(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
    [[nodiscard]] bool chance(int percent) { return number(0, 99) < percent; }
    [[nodiscard]] Backend::Layers::Layer layer();
    void postLayers(Backend::QelIF& qel);
    void postOneLayer(Backend::QelIF& qel);
    void postZones(Backend::QelIF& qel);
    void postOscillators(Backend::QelIF& qel);
    void postPortOrTempo(Backend::QelIF& qel);
    void postSave(Backend::QelIF& qel);
    void postSequence(Backend::QelIF& qel);
    void postTake(Backend::QelIF& qel);

    std::mt19937_64 random_;
    std::filesystem::path data_;
    int inputs_;
    int outputs_;
    std::vector<std::string> sequences_; // their names
    std::vector<std::filesystem::path> written_;
};

} // namespace Soak
