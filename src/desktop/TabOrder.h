// The way of the Tab key through a window: as it is read, also through what has been made since it opened.
#pragma once

class QWidget;

namespace Desktop {

// What comes after (or before) `from` of all that can be seen and takes the focus by Tab, around the end; with null the
// first (last). Null where there is nothing.
[[nodiscard]] QWidget* nextByTab(QWidget& window, const QWidget* from, bool forward);

// Gives it the focus, scrolled to where it can be seen. False where there is nothing.
bool focusNextByTab(QWidget& window, bool forward);

} // namespace Desktop
