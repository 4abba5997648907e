// The dialogs that the window opens, and the question about unsaved changes.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

namespace Desktop {

class Models;
class PanelFrame;

class WindowDialogs final {
public:
    // `panels` are those whose presets can be saved; `say` shows what came of it. Everything outlives the object.
    WindowDialogs(Models& models, QWidget& window, std::vector<PanelFrame*> panels,
                  std::function<void(const QString&)> say);

    void openSetup(const std::function<void(const QString&)>& choosePalette);
    bool openSave(); // true when nothing is unsaved any more
    bool openLoad();
    void openImport();
    void openTake();
    void saveTakeFromLast(int fromLast); // 1: the last one; 0: everything
    // Whether the program may be left: nothing is unsaved, or one has been asked.
    bool askAboutUnsaved();

private:
    Models& models_;
    QWidget& window_;
    std::vector<PanelFrame*> panels_;
    std::function<void(const QString&)> say_;
};

} // namespace Desktop
