// Asks for the name of a preset, and whether all of a section is saved in it or chosen elements only.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <string>
#include <vector>

namespace Desktop {

// Something of a section that can be saved by itself.
struct PresetElement {
    QString text;
    bool selected = false; // at present, in the panel
};

class PresetDialog final : public QDialog {
    Q_OBJECT

public:
    // `names`: the presets that there are. Without elements there is no choice of them.
    PresetDialog(const QString& panel, const QString& name, const QStringList& names,
                 const std::vector<PresetElement>& elements, QWidget* parent);

    [[nodiscard]] QString name() const { return name_->text().trimmed(); }
    // The places of what was chosen; empty: all of it.
    [[nodiscard]] std::vector<int> chosen() const;

private:
    void refresh();

    QStringList names_;
    QLineEdit* name_;
    QLabel* remark_;
    QCheckBox* choose_;
    QListWidget* list_;
    QPushButton* save_;
};

} // namespace Desktop
