// The on-screen controls.
#pragma once

#include "desktop/models/Model.h"
#include "desktop/models/Underway.h"
#include "input/ControlMap.h"

#include <QString>
#include <set>

namespace Desktop {

class Models;

class ControlsModel final : public Model {
    Q_OBJECT

public:
    explicit ControlsModel(Models& models);

    [[nodiscard]] const Backend::Controls::ControlMap& map() const { return map_; }
    [[nodiscard]] const std::set<Cell>& selection() const { return selection_; }
    // What it sends, in words: "Controller Change 7: Channel Volume → default output".
    [[nodiscard]] QString textOf(const Backend::Controls::Control& control) const;

    // Playing.
    void move(const Cell& cell, int value);
    void release(const Cell& cell); // it springs back, if it does
    void select(std::set<Cell> cells);

    // Edits, which can be undone. Those of one gesture are one.
    void put(const QString& text, const Backend::Controls::Control& control, bool isGesture = false);
    void moveTo(const Cell& from, const Cell& to); // they change places, if there is one already
    void remove(const Cell& cell);
    void loadPreset(const std::string& name);

signals:
    void valueMoved(const Cell& cell, int value);
    void focusAsked(const Cell& cell); // cell (-1, -1): the selected one

private:
    struct Snapshot {
        Backend::Controls::ControlMap map;
        friend bool operator==(const Snapshot& a, const Snapshot& b) { return a.map.hasSameElements(b.map); }
    };

    void apply(const Backend::Controls::ControlMap& map);
    void edit(const QString& text, Backend::Controls::ControlMap after, int key = 0);

    Models& models_;
    Backend::Controls::ControlMap map_;
    Underway<Snapshot> underway_;
    std::set<Cell> selection_;
};

} // namespace Desktop
