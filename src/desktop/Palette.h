// Every colour of the window. Nothing paints with another one.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>

namespace Desktop {

struct Palette {
    QColor ground, panel, raised, sunk, line;
    QColor text, dim, faint;      // faint: never for what must be read
    QColor amber;                 // values and selection
    QColor teal, blue, rose;      // zones, layers and ports in turn
    QColor green;                 // what plays
    QColor onAccent;              // text on any of the accents
    QColor white, black, onWhite; // the keys of a piano
    QColor danger;

    // One of teal, blue and rose; negative numbers are dim.
    [[nodiscard]] QColor inTurn(int number) const;
};

// The palette in use, "Dark" at first. [gui]
[[nodiscard]] const Palette& palette();
[[nodiscard]] QString paletteName();
[[nodiscard]] QStringList paletteNames();
// An unknown name changes nothing. The application's style follows.
void usePalette(const QString& name);

// The face of figures, as large as the application's font.
[[nodiscard]] QFont figureFont(double scale = 1.0);
// The unit of the grid that everything stands on, about 4 pixels; it grows with the font.
[[nodiscard]] int grid(int units = 1);

} // namespace Desktop
