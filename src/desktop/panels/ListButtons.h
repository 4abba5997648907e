// The buttons of a list of like things, one of which is chosen: add, copy, order, remove.
#pragma once

#include <QToolButton>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace Desktop {

enum class ListWork { add, copy, earlier, later, remove };

// Does that to a list, at the place of the chosen thing; `place` is then where the chosen one is. `fresh` makes a new
// thing, `copyOf` a copy of one. A list without that place only takes new things.
template <typename List, typename Fresh, typename Copy>
void doWork(ListWork work, List& list, std::size_t& place, Fresh fresh, Copy copyOf) {
    const auto at = [&list](std::size_t i) { return list.begin() + static_cast<std::ptrdiff_t>(i); };
    if (work == ListWork::add) {
        place = list.empty() ? 0 : std::min(place + 1, list.size());
        list.insert(at(place), fresh());
    } else if (place < list.size()) {
        switch (work) {
        case ListWork::copy:
            list.insert(at(place + 1), copyOf(list[place]));
            ++place;
            break;
        case ListWork::earlier:
            if (place > 0) {
                std::swap(list[place], list[place - 1]);
                --place;
            }
            break;
        case ListWork::later:
            if (place + 1 < list.size()) {
                std::swap(list[place], list[place + 1]);
                ++place;
            }
            break;
        case ListWork::remove:
            list.erase(at(place));
            place = list.empty() ? 0 : std::min(place, list.size() - 1);
            break;
        case ListWork::add:
            break;
        }
    }
}
// The same of things that are copied as they are.
template <typename List, typename Fresh> void doWork(ListWork work, List& list, std::size_t& place, Fresh fresh) {
    doWork(work, list, place, fresh, [](const auto& thing) { return thing; });
}

class ListButtons final : public QWidget {
    Q_OBJECT

public:
    // For assistive technology: "Add a translation", "Translation earlier"; `role` stands behind that, " of the key".
    ListButtons(const QString& thing, const QString& role, QWidget* parent);

    // What can be done. `canCopy`: the chosen thing can be copied.
    void showState(std::size_t place, std::size_t count, bool canCopy);

signals:
    void asked(ListWork work);

private:
    QToolButton *add_, *copy_, *earlier_, *later_, *remove_;
};

} // namespace Desktop
