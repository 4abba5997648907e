// A choice among lengths in musical time.
#pragma once

#include <QComboBox>
#include <cstdint>

namespace Desktop {

void addTickLengths(QComboBox& box);
// Chooses a length; one that is not among the choices becomes one more of them.
void showTickLength(QComboBox& box, std::int32_t ticks);
[[nodiscard]] std::int32_t tickLengthOf(const QComboBox& box);

} // namespace Desktop
