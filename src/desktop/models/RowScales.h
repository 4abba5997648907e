// Scales, given to the keys of a row of the computer keyboard.
#pragma once

#include "desktop/models/KeysModel.h"

#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Desktop {

[[nodiscard]] QStringList scaleNames();
// The keys of the row that a key stands in, from that key to the right; none of keys in no row of letters.
[[nodiscard]] std::vector<std::uint32_t> keysOfRowFrom(std::uint32_t code);
// Those keys with the notes of a scale, up to the highest note there is: from `first` on, in its zone; without it from
// C4, in none.
[[nodiscard]] std::vector<Backend::ComputerInput::KeyConfiguration>
scaleOnRow(std::uint32_t code, std::size_t scale, const std::optional<KeysModel::KeyNote>& first, Backend::QelIF& qel);

} // namespace Desktop
