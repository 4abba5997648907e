// The panel with the help: what is under the pointer, and the manual.
#pragma once

#include "desktop/panels/PanelFrame.h"

#include <QTextBrowser>

namespace Desktop {

// Shows pages with their pictures as wide as there is room.
class ManualView final : public QTextBrowser {
    Q_OBJECT

public:
    using QTextBrowser::QTextBrowser;
    [[nodiscard]] QVariant loadResource(int type, const QUrl& name) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
};

class HelpPanel final : public PanelFrame {
    Q_OBJECT

public:
    HelpPanel(Models& models, QWidget* parent);

    void showText(const QString& text);
    // A page of the manual, by the name of a panel; an unknown one is the first page.
    void openPage(const QString& page);

private:
    QLabel* text_;
    ManualView* manual_;
};

// The folder of the manual's pages; empty when it was not built.
[[nodiscard]] QString manualFolder();

} // namespace Desktop
