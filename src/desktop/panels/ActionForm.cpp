#include "desktop/panels/ActionForm.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/MenuBox.h"
#include "input/HelpTexts.h"

#include <QCompleter>
#include <QLineEdit>
#include <utility>

namespace Desktop {

namespace {

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

ActionForm::ActionForm(Models& models, const QString& name, QString role, QWidget* parent)
    : QWidget(parent), models_(models), role_(std::move(role)), all_(new QVBoxLayout(this)) {
    all_->setContentsMargins(0, 0, 0, 0);
    all_->setSpacing(grid(1));
    list_ = makeMenu(name, tr("What happens; type to search"), this);
    list_->setEditable(true); // so that one can search by typing
    list_->setInsertPolicy(QComboBox::NoInsert);
    list_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    list_->completer()->setFilterMode(Qt::MatchContains);
    list_->lineEdit()->setAccessibleName(name);
    connect(list_, &QComboBox::activated, this, [this](int index) {
        models_.edits.alone([&] { choose(list_->itemData(index).toString().toStdString()); });
    });
    // What was typed and is no action goes again.
    connect(list_->lineEdit(), &QLineEdit::editingFinished, this,
            [this] { list_->setEditText(list_->itemText(list_->currentIndex())); });
    all_->addWidget(list_);
}

void ActionForm::offer(std::string_view keyword, std::string_view displayName) {
    list_->addItem(textOf(displayName), textOf(keyword));
}

void ActionForm::showChosen(const std::string& keyword) {
    list_->setCurrentIndex(list_->findData(QString::fromStdString(keyword)));
}

void ActionForm::build(int helpId, const std::function<void()>& changed, const std::function<void(FormRows&)>& fill) {
    models_.edits.endOfGesture(); // of a row that goes
    delete fields_;
    fields_ = new QWidget(this);
    FormRows rows(models_, *fields_, role_, changed);
    if (fill) {
        fill(rows);
    }
    const QString help = textOf(Backend::helpText(helpId));
    fields_->setStatusTip(help);
    list_->setStatusTip(help.isEmpty() ? tr("What happens; type to search") : help);
    all_->addWidget(fields_);
    fields_->show();
}

} // namespace Desktop
