// The oscillators.
#pragma once

#include "desktop/models/Model.h"
#include "desktop/models/Underway.h"
#include "generators/OscList.h"

#include <QString>
#include <algorithm>

namespace Desktop {

class Models;

class OscillatorsModel final : public Model {
    Q_OBJECT

public:
    explicit OscillatorsModel(Models& models);

    [[nodiscard]] const Backend::Oscillators::OscList& list() const { return list_; }

    void play(int oscillator, bool on);
    void select(int oscillator); // functions that change the selected one act on it
    // Edits, which can be undone.
    void change(const QString& text, const Backend::Oscillators::Oscillator& after);
    void add();
    void remove(int oscillator);
    void loadPreset(const std::string& name);

signals:
    void valueMoved(int oscillator, int value);

private:
    struct Snapshot {
        Backend::Oscillators::OscList list;
        friend bool operator==(const Snapshot& a, const Snapshot& b) {
            return std::equal(a.list.begin(), a.list.end(), b.list.begin(), b.list.end());
        }
    };

    void apply(const Backend::Oscillators::OscList& list);
    void edit(const QString& text, Backend::Oscillators::OscList after, int key = 0);

    Models& models_;
    Backend::Oscillators::OscList list_;
    Underway<Snapshot> underway_;
};

} // namespace Desktop
