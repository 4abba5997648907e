// Preferences, and what of the playing is one number: tempo, thru, the default output.
#pragma once

#include "desktop/models/Model.h"
#include "gui/GuiMessages.h"

namespace Desktop {

class Models;

class SettingsModel final : public Model {
    Q_OBJECT

public:
    explicit SettingsModel(Models& models);

    [[nodiscard]] int value(Gui::ChangedSetting setting) const;
    [[nodiscard]] bool isOn(Gui::ChangedSetting setting) const { return value(setting) != 0; }
    // Asks the backend, which tells of the change.
    void set(Gui::ChangedSetting setting, int value);
    void toggle(Gui::ChangedSetting setting) { set(setting, isOn(setting) ? 0 : 1); }

    [[nodiscard]] int tempo() const { return value(Gui::ChangedSetting::tempo); }
    void setTempo(int beatsPerMinute); // can be undone

signals:
    void settingChanged(Gui::ChangedSetting setting, int value);

private:
    Models& models_;
    std::map<Gui::ChangedSetting, int> values_;
};

} // namespace Desktop
