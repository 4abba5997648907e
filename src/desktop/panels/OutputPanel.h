// The panel of the output: the music keyboard, the sounds of General MIDI, and the controllers.
#pragma once

#include "desktop/panels/PanelFrame.h"

namespace Desktop {

class MusicKeyboard;
class NumberField;

class OutputPanel final : public PanelFrame, public Gui::OutputPanel, public Gui::MusicKeyboardCtl {
    Q_OBJECT

public:
    OutputPanel(Models& models, QWidget* parent);

    void setZone(int zone) override;
    void setChannel(int channel) override { channel_ = channel; }
    void clearHilight() override;
    [[nodiscard]] MusicKeyboard& keyboard() { return *keyboard_; }
    [[nodiscard]] QMenu& programMenu() { return *programs_; }
    void keyboardReleased();
    void showControllers(bool on);

signals:
    void controllersAsked(bool on);

private:
    void refresh();
    void play(bool on, int note, int velocity);
    void light(int note);
    void buildControllers();

    MusicKeyboard* keyboard_;
    QMenu* programs_;
    MenuButton* zoneButton_;
    QToolButton* controllersButton_;
    QWidget* controllers_;
    std::map<int, NumberField*> fields_; // by controller
    int zone_ = -1;
    int channel_ = -1;
};

} // namespace Desktop
