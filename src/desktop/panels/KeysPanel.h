// The panel of the computer keyboard.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "input/KeyConfiguration.h"

#include <QCheckBox>
#include <QLabel>
#include <optional>

namespace Desktop {

class ComputerKeyboard;
class EntriesEditor;

class KeysPanel final : public PanelFrame {
    Q_OBJECT

public:
    KeysPanel(Models& models, QWidget* parent);

    // What a key types in the live layout.
    void setLegend(std::uint32_t code, const QString& text);
    [[nodiscard]] ComputerKeyboard& keyboard() { return *keyboard_; }
    void refreshDown(); // nothing is lit any more
    // Opens the editor on a key.
    void edit(std::uint32_t code);

private:
    void makeEditor();
    void refresh();
    void showKey();
    void showOther(); // another key, from its first function on
    void store();
    void keyMenu(std::uint32_t code, const QPoint& where);
    void assignScale(std::uint32_t code);
    [[nodiscard]] Key key() const;

    ComputerKeyboard* keyboard_;
    QLabel* line_;
    QWidget* editor_;
    EntriesEditor* entries_;
    QCheckBox *global_, *shift_, *control_, *alt_, *useKeyUpMod_;
    std::map<std::uint32_t, QString> legends_;
    std::optional<Backend::ComputerInput::KeyConfiguration> copied_;
};

} // namespace Desktop
