#include "desktop/dialogs/PresetDialog.h"

#include "desktop/Palette.h"

#include <QCompleter>
#include <QDialogButtonBox>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace Desktop {

PresetDialog::PresetDialog(const QString& panel, const QString& name, const QStringList& names,
                           const std::vector<PresetElement>& elements, QWidget* parent)
    : QDialog(parent), names_(names) {
    setWindowTitle(tr("Save a preset of %1").arg(panel));
    auto* const all = new QVBoxLayout(this);
    all->setSpacing(grid(2));
    auto* const label = new QLabel(tr("Name of the preset"), this);
    all->addWidget(label);
    name_ = new QLineEdit(name, this);
    name_->setAccessibleName(label->text());
    auto* const completer = new QCompleter(names, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    name_->setCompleter(completer);
    label->setBuddy(name_);
    all->addWidget(name_);
    remark_ = new QLabel(this);
    remark_->setObjectName("Dim");
    remark_->setWordWrap(true);
    all->addWidget(remark_);
    choose_ = new QCheckBox(tr("Only what is chosen: loading it leaves everything else as it is"), this);
    choose_->setAccessibleName(choose_->text());
    choose_->setVisible(!elements.empty());
    all->addWidget(choose_);
    list_ = new QListWidget(this);
    list_->setAccessibleName(tr("What the preset holds"));
    list_->setVisible(!elements.empty());
    for (const PresetElement& element : elements) {
        auto* const item = new QListWidgetItem(element.text, list_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        item->setCheckState(element.selected ? Qt::Checked : Qt::Unchecked);
    }
    all->addWidget(list_, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    save_ = buttons->button(QDialogButtonBox::Save);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(buttons);
    connect(name_, &QLineEdit::textChanged, this, &PresetDialog::refresh);
    connect(choose_, &QCheckBox::toggled, this, &PresetDialog::refresh);
    connect(list_, &QListWidget::itemChanged, this, &PresetDialog::refresh);
    name_->selectAll();
    resize(grid(100), grid(elements.empty() ? 40 : 110));
    refresh();
}

void PresetDialog::refresh() {
    static const QRegularExpression forbidden(R"([<>:"/\\|?*])");
    const QString name = this->name();
    const bool fits = !name.isEmpty() && !name.contains(forbidden);
    list_->setEnabled(choose_->isChecked());
    const bool nothing = choose_->isChecked() && chosen().empty();
    remark_->setText(!fits && !name.isEmpty() ? tr("A name has none of these: < > : \" / \\ | ? *")
                     : nothing                ? tr("Nothing is chosen yet.")
                     : names_.contains(name)  ? tr("It takes the place of the preset of that name.")
                                              : QString());
    save_->setEnabled(fits && !nothing);
}

std::vector<int> PresetDialog::chosen() const {
    std::vector<int> places;
    if (choose_->isChecked()) {
        for (int row = 0; row < list_->count(); ++row) {
            if (list_->item(row)->checkState() == Qt::Checked) {
                places.push_back(row);
            }
        }
    }
    return places;
}

} // namespace Desktop
