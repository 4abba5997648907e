// The panels: which of them show, and how they share the space.
#pragma once

#include "gui/Panel.h"

#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <vector>

class QSettings;

namespace Desktop {

class ControlsPanel;
class DisplayPanel;
class HelpPanel;
class KeysPanel;
class Models;
class OutputPanel;
class PanelFrame;

// A row of buttons that show and hide panels, and below it the panels in rows.
class PanelArea final : public QWidget {
    Q_OBJECT

public:
    // `noteShowing` is told of each panel whenever one is shown or hidden.
    PanelArea(Models& models, std::function<void(Gui::Panel, bool)> noteShowing, QWidget* parent);

    // The bar of the system counts as a panel: it is shown elsewhere.
    void showPanel(Gui::Panel panel, bool on);
    [[nodiscard]] bool isShowing(Gui::Panel panel) const;
    [[nodiscard]] PanelFrame* panel(Gui::Panel panel) const { return panels_[static_cast<std::size_t>(panel)]; }
    // The panels with presets, and their titles.
    [[nodiscard]] std::vector<PanelFrame*> withPresets() const;

    [[nodiscard]] KeysPanel& keys() { return *keys_; }
    [[nodiscard]] ControlsPanel& controls() { return *controls_; }
    [[nodiscard]] OutputPanel& output() { return *output_; }
    [[nodiscard]] HelpPanel& help() { return *help_; }

    // The button of each panel, in their order, which is that of the shortcuts.
    [[nodiscard]] static std::vector<Gui::Panel> inOrder();

    // What is remembered between runs.
    void restore(const QSettings& state);
    void save(QSettings& state) const;

signals:
    void arranged(); // others show than before

protected:
    void showEvent(QShowEvent* event) override;

private:
    void makeButtons();
    void makePanels();
    void addPanel(PanelFrame* frame, int row);
    void arrange();
    // The list of events is as high as the settings say, as far as the other rows can give way.
    void fitDisplay();
    void storeDisplayHeight();

    Models& models_;
    std::function<void(Gui::Panel, bool)> noteShowing_;
    KeysPanel* keys_ = nullptr;
    ControlsPanel* controls_ = nullptr;
    DisplayPanel* display_ = nullptr;
    OutputPanel* output_ = nullptr;
    HelpPanel* help_ = nullptr;
    std::array<PanelFrame*, Gui::panelCount> panels_{};
    std::array<QPushButton*, Gui::panelCount> buttons_{};
    std::array<bool, Gui::panelCount> wanted_{};
    QSplitter* rows_;
    std::vector<QSplitter*> rowSplitters_;
    QTimer storing_; // until a drag of the rows has ended
    bool isFitted_ = false;
};

} // namespace Desktop
