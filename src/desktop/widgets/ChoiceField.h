// A menu of words, some of which go with a number beside it.
#pragma once

#include "desktop/widgets/NumberField.h"

#include <QComboBox>
#include <QWidget>
#include <functional>
#include <vector>

namespace Desktop {

class ChoiceField final : public QWidget {
    Q_OBJECT

public:
    struct Choice {
        QString text;
        bool hasNumber = false;
        int min = 0;
        int max = 127;
        int number = 0;                        // the one it has when the user chooses it
        std::function<QString(int)> written{}; // decimal without
    };

    explicit ChoiceField(std::vector<Choice> choices, QWidget* parent);

    // The name and the help of the menu; the number's name says whose it is.
    void describe(const QString& name, const QString& help);
    // From outside: nobody is told. A number out of range widens the range of its choice.
    void set(int choice, int number = 0);
    [[nodiscard]] int choice() const { return menu_->currentIndex(); }
    [[nodiscard]] int number() const { return number_->value(); }

signals:
    void chosen(); // by the user, the choice or the number
    void letGo();  // the end of a gesture

private:
    void showNumber(int number);

    std::vector<Choice> choices_;
    QComboBox* menu_;
    NumberField* number_;
    int shown_ = -1; // the choice whose number is shown
};

} // namespace Desktop
