// The main window: the bar, the panels, the help line.
#pragma once

#include "desktop/DesktopApplication.h"
#include "desktop/PanelArea.h"
#include "desktop/WindowDialogs.h"
#include "gui/Panel.h"

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace Desktop {

class HelpLine;
class Models;
class SystemBar;

class MainWindow final : public QWidget {
    Q_OBJECT

public:
    // `gui` notes which panels show. `models` outlives the window.
    MainWindow(Models& models, std::function<void(Gui::Panel, bool)> noteShowing);
    ~MainWindow() override;

    void showPanel(Gui::Panel panel, bool on) { area_->showPanel(panel, on); }
    void togglePanel(Gui::Panel panel);
    [[nodiscard]] bool isShowing(Gui::Panel panel) const { return area_->isShowing(panel); }
    [[nodiscard]] PanelFrame* panel(Gui::Panel panel) const { return area_->panel(panel); }

    [[nodiscard]] SystemBar& bar() { return *bar_; }
    [[nodiscard]] KeysPanel& keys() { return area_->keys(); }
    [[nodiscard]] ControlsPanel& controls() { return area_->controls(); }
    [[nodiscard]] OutputPanel& output() { return area_->output(); }

    void showHelp(const QString& text);
    void showFault(const QString& text);
    void showNews(const HostNews& news);
    void openSetup();
    // As in WindowDialogs.
    bool openSave() { return dialogs_->openSave(); }
    bool openLoad() { return dialogs_->openLoad(); }
    void openImport() { dialogs_->openImport(); }
    bool askAboutUnsaved() { return dialogs_->askAboutUnsaved(); }
    void openTake() { dialogs_->openTake(); }
    void saveTakeFromLast(int fromLast) { dialogs_->saveTakeFromLast(fromLast); }

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
    void buildShortcuts();
    [[nodiscard]] QString stateFile() const;

    Models& models_;
    SystemBar* bar_;
    PanelArea* area_;
    HelpLine* helpLine_;
    std::unique_ptr<WindowDialogs> dialogs_;
    QTimer backup_;
    bool isClosed_ = false;
    bool dockedNow_ = false;
    QRect undocked_; // where it was before it was docked
};

} // namespace Desktop
