#include "core/InstallerEntries.h"

#include "core/QelUtils.h"

int commitPort() {
    Backend::QelUtils::install(Backend::Surroundings::ofSystem(), true);
    return 0;
}

int commitNoPort() {
    Backend::QelUtils::install(Backend::Surroundings::ofSystem(), false);
    return 0;
}

int uninstall() {
    Backend::QelUtils::uninstall(Backend::Surroundings::ofSystem());
    return 0;
}
