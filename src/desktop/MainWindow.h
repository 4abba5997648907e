// The main window: the bar, the panels, the help line.
#pragma once

#include "desktop/DesktopApplication.h"
#include "gui/Panel.h"

#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <vector>

namespace Desktop {

class ControlsPanel;
class HelpPanel;
class KeysPanel;
class Models;
class OutputPanel;
class PanelFrame;
class SystemBar;

class MainWindow final : public QWidget {
    Q_OBJECT

public:
    // `gui` notes which panels show. `models` outlives the window.
    MainWindow(Models& models, std::function<void(Gui::Panel, bool)> noteShowing);
    ~MainWindow() override;

    void showPanel(Gui::Panel panel, bool on);
    void togglePanel(Gui::Panel panel);
    [[nodiscard]] bool isShowing(Gui::Panel panel) const;
    [[nodiscard]] PanelFrame* panel(Gui::Panel panel) const { return panels_[static_cast<std::size_t>(panel)]; }

    [[nodiscard]] SystemBar& bar() { return *bar_; }
    [[nodiscard]] KeysPanel& keys() { return *keys_; }
    [[nodiscard]] ControlsPanel& controls() { return *controls_; }
    [[nodiscard]] OutputPanel& output() { return *output_; }

    void showHelp(const QString& text);
    void showFault(const QString& text);
    void showNews(const HostNews& news);
    void openSetup();
    bool openSave(); // true when nothing is unsaved any more
    bool openLoad();
    void openImport();
    // Whether the program may be left: nothing is unsaved, or one has been asked.
    bool askAboutUnsaved();
    void openTake();
    void saveTakeFromLast(int fromLast); // 1: the last one; 0: everything

    // What the window remembers between runs.
    void restoreState();
    void saveState() const;
    void applyFlags(); // always on top, docked to the bottom edge
    void setPaletteName(const QString& name);
    void panic();
    // Keeps what is unsaved for the case of a crash; each minute.
    void backUp();

signals:
    void closing();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void buildPanels();
    void buildShortcuts();
    void addPanel(PanelFrame* frame, int row);
    void arrange();
    [[nodiscard]] QString stateFile() const;

    Models& models_;
    std::function<void(Gui::Panel, bool)> noteShowing_;
    SystemBar* bar_;
    KeysPanel* keys_ = nullptr;
    ControlsPanel* controls_ = nullptr;
    OutputPanel* output_ = nullptr;
    HelpPanel* help_ = nullptr;
    std::array<PanelFrame*, Gui::panelCount> panels_{};
    std::array<QPushButton*, Gui::panelCount> buttons_{};
    std::array<bool, Gui::panelCount> wanted_{};
    QWidget* buttonRow_;
    QSplitter* rows_;
    std::vector<QSplitter*> rowSplitters_;
    QLabel* helpText_;
    QLabel* status_;
    QTimer backup_;
    bool isClosed_ = false;
    bool dockedNow_ = false;
    QRect undocked_; // where it was before it was docked
};

} // namespace Desktop
