// Names and places: the application's folders and its settings key.
#pragma once

#include "core/Surroundings.h"

#include <filesystem>
#include <string>

namespace Backend {

class QelUtils final {
public:
    static constexpr const char* COMPANY_NAME = "Pellinor Software";
    static constexpr const char* APPLICATION_NAME = "Tembrel 3";
    static constexpr const char* VERSION = "3.2";

    QelUtils() = delete;

    // The folder of all applications of the company. Surroundings within one folder of their own have no such level:
    // there it is the application's own folder. [any]
    [[nodiscard]] static std::filesystem::path getCompanyAppDataDir(const Surroundings& surroundings);
    // All files of the user lie below it: "Banks", "Sequences", "Retrospective Record", the preset folders. [any]
    [[nodiscard]] static std::filesystem::path getQelAppDataDir(const Surroundings& surroundings);
    // The installation folder, as the installer wrote it into the main settings key; empty when it did not. [backend]
    [[nodiscard]] static std::filesystem::path getQelProgDir(const Surroundings& surroundings);

    // Settings key paths, below the current user. [any]
    [[nodiscard]] static std::string getRegistryKey(const std::string& applicationName);
    [[nodiscard]] static std::string getMainRegistryKey() { return getRegistryKey(APPLICATION_NAME); }
    // True when the key opens and holds a "ProgDir". [backend]
    [[nodiscard]] static bool registryKeyExists(const Surroundings& surroundings, const std::string& key);

    // The name of the virtual MIDI port. [any]
    [[nodiscard]] static std::string getQelPortName() { return "Tembrel"; }

    // Opens the manual at one of its pages, empty: at its start; false when that failed. [any]
    static bool showManual(const Surroundings& surroundings, const std::string& page = {});
};

} // namespace Backend
