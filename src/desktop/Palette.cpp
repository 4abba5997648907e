#include "desktop/Palette.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <algorithm>
#include <cstddef>

namespace Desktop {

namespace {

struct NamedPalette {
    const char* name;
    Palette colours;
};

const NamedPalette& named(std::size_t place) {
    // clang-format off
    static const NamedPalette palettes[]{
        {"Dark", {
            "#15171b", "#1d2026", "#262a32", "#121418", "#31363f",
            "#e6e8eb", "#9aa1ac", "#5f6773",
            "#f2b04c",
            "#4cc2b4", "#6aa5f8", "#ee7b93",
            "#7fc97a",
            "#12141a",
            "#ebebee", "#1a1c21", "#3a3f49",
            "#e0526b"}},
        {"Light", {
            "#e9ebee", "#f7f8fa", "#ffffff", "#e6e9ee", "#c3c8d0",
            "#1b1e24", "#535a66", "#8d95a1",
            "#b06a00",
            "#0c8577", "#2563c9", "#c2365a",
            "#2f8a2a",
            "#ffffff",
            "#ffffff", "#2b2f37", "#3a3f49",
            "#c2263f"}},
        {"High contrast", {
            "#000000", "#000000", "#16161a", "#2a2a31", "#b9bdc6",
            "#ffffff", "#e3e6ea", "#8f949e",
            "#ffd23f",
            "#3df2dc", "#9cc6ff", "#ff9db4",
            "#7dff72",
            "#000000",
            "#ffffff", "#000000", "#000000",
            "#ff5c77"}}};
    // clang-format on
    return palettes[place];
}

constexpr std::size_t paletteCount = 3;
std::size_t inUse = 0;

QString rgb(const QColor& colour) {
    return colour.name();
}

enum class Sign { arrow, tick, dot };

// A small sign as a picture: style sheets take one from files only. Empty where there is no room for files.
QString pictureFile(Sign sign, const QColor& colour) {
    static const QTemporaryDir folder;
    const QString file =
        folder.filePath(QStringLiteral("%1-%2.png").arg(static_cast<int>(sign)).arg(rgb(colour).mid(1)));
    if (folder.isValid() && !QFile::exists(file)) {
        constexpr int size = 32; // scaled down to whatever is wanted
        QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        switch (sign) {
        case Sign::arrow:
            painter.drawPolygon(QPolygonF{{3, 10}, {size - 3, 10}, {size / 2.0, 25}});
            break;
        case Sign::tick:
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(colour, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(QPolygonF{{6, 17}, {13, 24}, {26, 8}});
            break;
        case Sign::dot:
            painter.drawEllipse(QPointF(size / 2.0, size / 2.0), 7, 7);
            break;
        }
        painter.end();
        picture.save(file);
    }
    return file;
}

// For what the toolkit draws itself. Names in braces are colours, {g1} ... steps of the grid.
QString styleSheet(const Palette& p) {
    QString sheet = QStringLiteral(R"(
QWidget { color: {text}; background: transparent; selection-background-color: {amber}; selection-color: {onAccent}; }
QMainWindow, QDialog, QMenu, #MainWindow { background: {ground}; }
QToolTip { color: {text}; background: {raised}; border: 1px solid {line}; padding: {g1}px; }
#SystemBar, #HelpLine { background: {raised}; }
#Panel { background: {panel}; border: 1px solid {line}; border-radius: 7px; }
#PanelTitle { font-weight: 600; }
#Caption { color: {dim}; font-size: {small}px; }
#Dim { color: {dim}; }
QPushButton, QToolButton { background: {raised}; border: 1px solid {line}; border-radius: 6px;
    padding: {g1}px {g2}px; min-height: {g4}px; }
QPushButton:hover, QToolButton:hover { border-color: {dim}; }
QPushButton:pressed, QToolButton:pressed { background: {sunk}; }
QPushButton:checked, QToolButton:checked { background: {teal}; color: {onAccent}; border-color: {teal}; }
QPushButton:disabled, QToolButton:disabled { color: {faint}; }
QToolButton#Flat, QPushButton#Arrow { background: transparent; border-color: transparent; }
QToolButton#Flat { padding: {g1}px 2px; }
QPushButton#Arrow { padding: {g1}px {g1}px; min-width: {g4}px; }
QToolButton#Flat:hover, QPushButton#Arrow:hover { border-color: {line}; }
QToolButton#Flat:checked { background: {amber}; color: {onAccent}; border-color: {amber}; }
QToolButton#Program { background: {sunk}; font-weight: 600; min-height: {g5}px; }
QPushButton#Pill, QToolButton#Pill { border-radius: {pill}px; padding: {g1}px {g2}px; }
QToolButton::menu-indicator { image: none; width: 0; }
QPushButton#PanelButton { color: {dim}; background: transparent; }
QPushButton#PanelButton:checked { color: {text}; background: {raised}; border-color: {line};
    border-bottom: 2px solid {amber}; }
QPushButton#Panic { color: {danger}; background: transparent; border-color: {danger}; font-weight: 600;
    min-width: {g20}px; }
QPushButton#Panic:pressed { color: {onAccent}; background: {danger}; }
QPushButton#Small { padding: 0 {g2}px; min-height: {g3}px; }
QPushButton#Small:checked { background: {amber}; border-color: {amber}; }
QPushButton:checked:disabled, QPushButton#Small:checked:disabled, QToolButton:checked:disabled {
    background: transparent; color: {faint}; border-color: {line}; }
QPushButton:focus, QToolButton:focus, QPushButton#Small:focus, QPushButton#Panic:focus, QPushButton#PanelButton:focus,
QPushButton#Arrow:focus, QToolButton#Flat:focus { border: 2px solid {amber}; }
QPushButton:checked:focus, QToolButton:checked:focus, QPushButton#Small:checked:focus,
QToolButton#Flat:checked:focus { border: 2px solid {text}; }
QLineEdit, QComboBox, QAbstractSpinBox, QPlainTextEdit, QTextBrowser, QListView, QTreeView, QTableView {
    background: {sunk}; border: 1px solid {line}; border-radius: 6px; padding: {g1}px; }
QLineEdit:focus, QComboBox:focus, QAbstractSpinBox:focus, QListView:focus, QTreeView:focus, QTableView:focus,
QTextBrowser:focus { border-color: {amber}; }
QLineEdit:disabled, QComboBox:disabled, QAbstractSpinBox:disabled { color: {faint}; }
QLineEdit { padding-left: {g2}px; padding-right: {g2}px; }
QComboBox { padding-left: {g2}px; padding-right: {g1}px; }
QComboBox::drop-down { border: none; width: {g4}px; }
QComboBox::down-arrow { width: {g3}px; height: {g3}px; right: {g1}px; image: url({arrow}); }
QComboBox::down-arrow:disabled { image: none; }
QComboBox QAbstractItemView { background: {raised}; border: 1px solid {line}; }
QSpinBox::up-button, QSpinBox::down-button, QDoubleSpinBox::up-button, QDoubleSpinBox::down-button { width: 0; }
QListView::item, QTreeView::item { padding: 2px 0; }
QListView::item:selected, QTreeView::item:selected, QTableView::item:selected { background: {amber};
    color: {onAccent}; }
QHeaderView::section { background: {panel}; color: {dim}; border: none; padding: {g1}px; }
QTableView { gridline-color: {line}; }
QMenu { border: 1px solid {line}; padding: {g1}px; }
QMenu::item { padding: {g1}px {g5}px; border-radius: 4px; }
QMenu::item:selected { background: {amber}; color: {onAccent}; }
QMenu::item:disabled { color: {faint}; }
QMenu::separator { height: 1px; background: {line}; margin: {g1}px; }
QCheckBox, QRadioButton { spacing: {g2}px; }
QCheckBox::indicator, QRadioButton::indicator, QListView::indicator { width: {g3}px; height: {g3}px;
    border: 1px solid {dim}; border-radius: 3px; background: {sunk}; }
QRadioButton::indicator { border-radius: {round}px; }
QCheckBox::indicator:checked, QListView::indicator:checked { background: {amber}; border-color: {amber};
    image: url({tick}); }
QRadioButton::indicator:checked { background: {amber}; border-color: {amber}; image: url({dot}); }
QCheckBox:disabled, QRadioButton:disabled { color: {faint}; }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: {line}; }
QCheckBox::indicator:checked:disabled, QRadioButton::indicator:checked:disabled { background: {line}; }
QCheckBox:focus, QRadioButton:focus { color: {amber}; }
QCheckBox::indicator:focus, QRadioButton::indicator:focus { border: 2px solid {amber}; }
QScrollArea { border: none; }
QAbstractScrollArea::corner { background: transparent; border: none; }
QScrollBar { background: transparent; width: {g2}px; height: {g2}px; margin: 0; }
QScrollBar::handle { background: {faint}; border-radius: 3px; min-height: {g5}px; min-width: {g5}px; }
QScrollBar::handle:hover { background: {dim}; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QSplitter::handle { background: transparent; }
QSplitter::handle:hover { background: {line}; }
QTabBar { qproperty-drawBase: 0; }
QTabBar::tab { padding: {g1}px {g3}px; color: {dim}; background: transparent; border-bottom: 2px solid {line}; }
QTabBar::tab:selected { color: {text}; border-bottom: 2px solid {amber}; }
QTabBar::tab:selected:focus { color: {amber}; }
QTabWidget::pane { border: none; }
)");
    const std::pair<const char*, QString> words[]{
        {"{arrow}", pictureFile(Sign::arrow, p.dim)},
        {"{tick}", pictureFile(Sign::tick, p.onAccent)},
        {"{dot}", pictureFile(Sign::dot, p.onAccent)},
        {"{ground}", rgb(p.ground)},
        {"{panel}", rgb(p.panel)},
        {"{raised}", rgb(p.raised)},
        {"{sunk}", rgb(p.sunk)},
        {"{line}", rgb(p.line)},
        {"{text}", rgb(p.text)},
        {"{dim}", rgb(p.dim)},
        {"{faint}", rgb(p.faint)},
        {"{amber}", rgb(p.amber)},
        {"{teal}", rgb(p.teal)},
        {"{danger}", rgb(p.danger)},
        {"{onAccent}", rgb(p.onAccent)},
        {"{g1}", QString::number(grid())},
        {"{g2}", QString::number(grid(2))},
        {"{g3}", QString::number(grid(3))},
        {"{g4}", QString::number(grid(4))},
        {"{g5}", QString::number(grid(5))},
        {"{g20}", QString::number(grid(20))},
        {"{pill}", QString::number(grid(3))},
        {"{round}", QString::number((grid(3) + 2) / 2)},
        {"{small}", QString::number(std::max(9, QFontMetrics(QApplication::font()).height() * 5 / 7))}};
    for (const auto& [word, value] : words) {
        sheet.replace(QLatin1String(word), value);
    }
    return sheet;
}

} // namespace

QColor Palette::inTurn(int number) const {
    const QColor* const accents[]{&teal, &blue, &rose};
    return number < 0 ? dim : *accents[number % 3];
}

const Palette& palette() {
    return named(inUse).colours;
}

QString paletteName() {
    return QString::fromLatin1(named(inUse).name);
}

QStringList paletteNames() {
    QStringList names;
    for (std::size_t i = 0; i < paletteCount; ++i) {
        names << QString::fromLatin1(named(i).name);
    }
    return names;
}

void usePalette(const QString& name) {
    const auto place = paletteNames().indexOf(name);
    if (place < 0) {
        return;
    }
    inUse = static_cast<std::size_t>(place);
    const Palette& p = palette();
    QPalette colours;
    colours.setColor(QPalette::Window, p.ground);
    colours.setColor(QPalette::Base, p.sunk);
    colours.setColor(QPalette::AlternateBase, p.panel);
    colours.setColor(QPalette::Button, p.raised);
    colours.setColor(QPalette::Highlight, p.amber);
    colours.setColor(QPalette::HighlightedText, p.onAccent);
    colours.setColor(QPalette::Link, p.amber);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText}) {
        colours.setColor(role, p.text);
    }
    colours.setColor(QPalette::PlaceholderText, p.dim);
    QApplication::setPalette(colours);
    qApp->setStyleSheet(styleSheet(p));
}

QFont figureFont(double scale) {
    static const QString face = [] {
        for (const char* const name : {"JetBrains Mono", "DejaVu Sans Mono", "Liberation Mono"}) {
            if (QFontDatabase::families().contains(QLatin1String(name))) {
                return QString::fromLatin1(name);
            }
        }
        return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    }();
    QFont font = QApplication::font();
    font.setFamily(face);
    if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * scale)));
    } else {
        font.setPointSizeF(font.pointSizeF() * scale);
    }
    return font;
}

int grid(int units) {
    static int height = 0;
    static QFont measured;
    if (height == 0 || measured != QApplication::font()) {
        measured = QApplication::font();
        height = QFontMetrics(measured).height();
    }
    return std::max(1, units * height / 4);
}

} // namespace Desktop
