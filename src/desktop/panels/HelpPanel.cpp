#include "desktop/panels/HelpPanel.h"

#include "desktop/Palette.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QScrollBar>

namespace Desktop {

QString manualFolder() {
    const QDir beside(QCoreApplication::applicationDirPath());
    for (const char* const place : {"Manual", "../share/tembrel/Manual"}) {
        if (const QString path = beside.absoluteFilePath(QString::fromLatin1(place));
            QFile::exists(path + "/index.htm")) {
            return QDir::cleanPath(path);
        }
    }
    return {};
}

QVariant ManualView::loadResource(int type, const QUrl& name) {
    const QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) {
        return resource;
    }
    QImage picture;
    picture.loadFromData(resource.toByteArray());
    const double room = viewport()->width() - 4 * document()->documentMargin();
    if (picture.isNull() || room < 1) {
        return resource;
    }
    if (picture.width() > room) {
        if (const int pixels = static_cast<int>(room * devicePixelRatioF()); picture.width() > pixels) {
            picture = picture.scaledToWidth(pixels, Qt::SmoothTransformation);
        }
        picture.setDevicePixelRatio(picture.width() / room);
    }
    return picture;
}

void ManualView::resizeEvent(QResizeEvent* event) {
    const bool wider = event->oldSize().width() != event->size().width();
    QTextBrowser::resizeEvent(event);
    if (wider && !source().isEmpty()) {
        const int place = verticalScrollBar()->value();
        reload();
        verticalScrollBar()->setValue(place);
    }
}

HelpPanel::HelpPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::help, tr("Help"), tr("Point at something to read what it is"), models, parent) {
    text_ = new QLabel(this);
    text_->setWordWrap(true);
    text_->setMinimumHeight(grid(8)); // two lines: the page below stays where it is
    text_->setAlignment(Qt::AlignTop);
    text_->setText(tr("Point at something: here stands what it is."));
    body().addWidget(text_);
    manual_ = new ManualView(this);
    manual_->setAccessibleName(tr("The manual"));
    manual_->setOpenExternalLinks(false);
    manual_->setFocusPolicy(Qt::TabFocus);
    manual_->setMinimumSize(grid(50), grid(20));
    body().addWidget(manual_, 1);
    openPage("index");
}

void HelpPanel::showText(const QString& text) {
    text_->setText(text);
}

void HelpPanel::openPage(const QString& page) {
    const QString folder = manualFolder();
    if (folder.isEmpty()) {
        manual_->setPlainText(tr("The manual was not built with this program."));
        return;
    }
    const QString file = folder + "/" + page + ".htm";
    manual_->setSource(QUrl::fromLocalFile(QFile::exists(file) ? file : folder + "/index.htm"));
}

} // namespace Desktop
