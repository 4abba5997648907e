#include "desktop/models/PresetNames.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "platform/PathText.h"

#include <QDir>

namespace Desktop {

namespace {

QDir folderOf(Models& models, const QString& folder) {
    return {QString::fromStdString(Platform::textOf(models.qel().getApplicationData())) + "/" + folder};
}

} // namespace

QStringList presetNames(Models& models, const QString& folder) {
    QStringList names;
    for (const QString& file : folderOf(models, folder).entryList({"*.pst"}, QDir::Files, QDir::Name)) {
        names << file.chopped(4);
    }
    const QString builtIn = "000 - Default";
    if (!names.contains(builtIn)) {
        names.prepend(builtIn);
    }
    return names;
}

bool isPresetFile(Models& models, const QString& folder, const QString& name) {
    return folderOf(models, folder).exists(name + ".pst");
}

} // namespace Desktop
