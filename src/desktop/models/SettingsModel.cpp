#include "desktop/models/SettingsModel.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/models/Models.h"
#include "gui/QelGui.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <algorithm>

namespace Desktop {

using Gui::ChangedSetting;

SettingsModel::SettingsModel(Models& models) : models_(models) {
    const Backend::RegistrySettings& start = models.gui().getRegistrySettings();
    values_ = {{ChangedSetting::tempo, 120},
               {ChangedSetting::tempoSource, 0},
               {ChangedSetting::defaultOutput, start.getDefaultMidiOutput()},
               {ChangedSetting::midiThru, start.getMidiThru()},
               {ChangedSetting::globalKeyboard, start.getGlobalKeyboard()},
               {ChangedSetting::retroRecordEnabled, start.isRetroRecordEnabled()},
               {ChangedSetting::retroRecordBufferSize, start.getRetroRecordBufferSize()},
               {ChangedSetting::alwaysOnTop, start.getAlwaysOnTop()},
               {ChangedSetting::useSkinBorder, start.getUseSkinBorder()},
               {ChangedSetting::dockToBottomEdge, start.getDockToBottomEdge()},
               {ChangedSetting::mouseSensitivity, start.getMouseSensitivity()},
               {ChangedSetting::largeDisplayFont, start.getLargeDisplayFont()},
               {ChangedSetting::clickZoneChannelTranspose, start.getClickZoneChannelTranspose()},
               {ChangedSetting::displayMidiInputEvents, start.getDisplayMidiInputEvents()},
               {ChangedSetting::displayMidiOutputEvents, start.getDisplayMidiOutputEvents()},
               {ChangedSetting::displayNumbers, start.getDisplayNumbers()},
               {ChangedSetting::displayHeight, start.getDisplayHeight()}};
    on(idOf(Gui::GuiMessage::setting), [this](std::uintptr_t which, std::intptr_t number) {
        const auto setting = static_cast<ChangedSetting>(which);
        const int now = static_cast<int>(number);
        if (const auto known = values_.find(setting); known != values_.end() && known->second == now) {
            return;
        }
        values_[setting] = now;
        emit settingChanged(setting, now);
        emit changed();
    });
    onCopy<std::string>(idOf(Gui::GuiMessage::defaultBank), [this](const std::string& path) {
        models_.gui().getRegistrySettings().setDefaultBank(path);
        emit changed();
    });
}

int SettingsModel::value(ChangedSetting setting) const {
    const auto known = values_.find(setting);
    return known == values_.end() ? 0 : known->second;
}

void SettingsModel::set(ChangedSetting setting, int value) {
    Backend::QelMessageManager& backend = models_.backend();
    const bool on = value != 0;
    const OnOffToggle toggle(on ? OnOffToggle::State::on : OnOffToggle::State::off);
    switch (setting) {
    case ChangedSetting::tempo:
        return backend.postChangeTempo(RelativeFixedValue::fixed(value), true);
    case ChangedSetting::tempoSource:
        return backend.postSetTempoSource(value, true);
    case ChangedSetting::defaultOutput:
        return backend.postChangeDefaultMidiOutput(SelectType::fixed(value));
    case ChangedSetting::midiThru:
        return backend.postChangeMidiThru(toggle, true);
    case ChangedSetting::globalKeyboard:
        return backend.postChangeGlobalKeyboard(toggle, true);
    case ChangedSetting::retroRecordEnabled:
        return backend.postEnableRetroRecord(on);
    case ChangedSetting::retroRecordBufferSize:
        return backend.postSetRetroRecordBufferSize(value);
    case ChangedSetting::alwaysOnTop:
        return backend.postSetAlwaysOnTop(on);
    case ChangedSetting::useSkinBorder:
        return backend.postSetUseSkinBorder(on);
    case ChangedSetting::dockToBottomEdge:
        return backend.postSetDockToBottomEdge(on);
    case ChangedSetting::mouseSensitivity:
        return backend.postSetMouseSensitivity(value);
    case ChangedSetting::largeDisplayFont:
        return backend.postSetLargeDisplayFont(on);
    case ChangedSetting::clickZoneChannelTranspose:
        return backend.postSetClickZoneChannelTranspose(on);
    case ChangedSetting::displayMidiInputEvents:
        return backend.postSetDisplayMidiInputEvents(on);
    case ChangedSetting::displayMidiOutputEvents:
        return backend.postSetDisplayMidiOutputEvents(on);
    case ChangedSetting::displayNumbers:
        return backend.postSetDisplayNumbers(on);
    case ChangedSetting::displayHeight:
        return backend.postSetDisplayHeight(value);
    case ChangedSetting::outputButton:
        return;
    }
}

void SettingsModel::setTempo(int beatsPerMinute) {
    models_.edits.edit<int>(
        tr("change the tempo"), tempo(), std::clamp(beatsPerMinute, 10, 500),
        [this](const int& tempo) {
            values_[ChangedSetting::tempo] = tempo;
            set(ChangedSetting::tempo, tempo);
            emit changed();
        },
        models_.edits.keyFor(1));
}

} // namespace Desktop
