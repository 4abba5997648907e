// Which of a list of like things is edited below: a menu of them, and the buttons of the list.
#pragma once

#include "desktop/panels/ListButtons.h"

#include <QComboBox>
#include <QStringList>
#include <cstddef>

namespace Desktop {

class ListChooser final : public QWidget {
    Q_OBJECT

public:
    // `thing` as in ListButtons; `none` stands in the menu of an empty list.
    ListChooser(const QString& thing, const QString& role, QString none, QWidget* parent);

    // The things in words. What was chosen stays chosen, as far as there is one at its place.
    void showThings(const QStringList& things);
    [[nodiscard]] std::size_t place() const { return place_; }
    // What is shown next has the chosen thing there.
    void setPlace(std::size_t place) { place_ = place; }

signals:
    void chosen(); // another one, by the user
    void asked(ListWork work);

private:
    QString none_;
    QComboBox* menu_;
    ListButtons* buttons_;
    std::size_t place_ = 0;
};

} // namespace Desktop
