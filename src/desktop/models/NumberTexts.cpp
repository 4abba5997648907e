#include "desktop/models/NumberTexts.h"

#include "values/Note.h"

namespace Desktop {

QString noteText(int note) {
    return QString::fromStdString(Note(note).getName());
}

QString signedText(int number) {
    return (number > 0 ? "+" : "") + QString::number(number);
}

} // namespace Desktop
