// The presets that the user has.
#pragma once

#include <QStringList>

namespace Desktop {

class Models;

// Those of a folder of the user's files, "Control Presets", sorted; the built-in one is always among them.
[[nodiscard]] QStringList presetNames(Models& models, const QString& folder);
// True when it has a file, so that it can be deleted.
[[nodiscard]] bool isPresetFile(Models& models, const QString& folder, const QString& name);

} // namespace Desktop
