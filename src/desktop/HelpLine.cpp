#include "desktop/HelpLine.h"

#include "desktop/Palette.h"
#include "desktop/widgets/ElidedLabel.h"

#include <QHBoxLayout>
#include <QStringList>

namespace Desktop {

HelpLine::HelpLine(QWidget* parent) : QWidget(parent) {
    setObjectName("HelpLine");
    setAttribute(Qt::WA_StyledBackground);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(grid(3), grid(1), grid(3), grid(1));
    text_ = new ElidedLabel(this);
    text_->setObjectName("Dim");
    text_->setAccessibleName(QObject::tr("Help line"));
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(text_, 1);
    status_ = new QLabel(this);
    status_->setAccessibleName(QObject::tr("Status"));
    status_->setStatusTip(
        QObject::tr("What an event takes from its arrival to its being played, by how much that differs, the MIDI "
                    "system, and the notes that sound"));
    row->addWidget(status_);
}

void HelpLine::showText(const QString& text) {
    text_->setText(text);
}

void HelpLine::showFault(const QString& text) {
    text_->setText("⚠ " + text);
}

void HelpLine::showStatus(const Gui::HostStatus& status) {
    QStringList parts;
    if (status.latencyMs >= 0) {
        parts << QObject::tr("latency %1 ms").arg(status.latencyMs, 0, 'f', 1)
              << QObject::tr("jitter %1").arg(status.jitterMs, 0, 'f', 1);
    }
    parts << QString::fromStdString(status.system)
          << (status.heldNotes == 1 ? QObject::tr("1 note held") : QObject::tr("%1 notes held").arg(status.heldNotes));
    const QString text = parts.join(" · ");
    if (text != status_->text()) {
        status_->setText(text);
    }
}

} // namespace Desktop
