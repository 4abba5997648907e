// The zones.
#pragma once

#include "desktop/models/Model.h"
#include "midiengine/ZoneMap.h"

namespace Desktop {

class Models;

class ZonesModel final : public Model {
    Q_OBJECT

public:
    explicit ZonesModel(Models& models);

    [[nodiscard]] const Backend::Zones::ZoneMap& zones() const { return zones_; }
    // Semitones; 0 for a zone that there is not.
    [[nodiscard]] int transposeOf(int zone) const;

    void select(int zone);
    // Edits, which can be undone.
    void transpose(int zone, int semitones);
    void add();
    void remove(int zone);
    // The zone is another one from then on; nothing happens when there is one of that number.
    void renumber(int zone, int number);

private:
    void edit(const QString& text, Backend::Zones::ZoneMap after, int key = 0);

    Models& models_;
    Backend::Zones::ZoneMap zones_;
};

} // namespace Desktop
