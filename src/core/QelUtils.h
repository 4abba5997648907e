// Names and places: the application's folders and its settings key; what an installer does with them.
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
    static constexpr const char* NAME_AND_VERSION = "Tembrel 3.2";

    QelUtils() = delete;

    // The folder of all applications of the company. Surroundings within one folder of their own have no such level:
    // there it is the application's own folder. [any]
    [[nodiscard]] static std::filesystem::path getCompanyAppDataDir(const Surroundings& surroundings);
    // All files of the user lie below it: "Banks", "Sequences", "Retrospective Record", the preset folders. [any]
    [[nodiscard]] static std::filesystem::path getQelAppDataDir(const Surroundings& surroundings);
    // The installation folder, as the installer wrote it into the main settings key; when it did not, where the running
    // program has its files; empty when it has none. [backend]
    [[nodiscard]] static std::filesystem::path getQelProgDir(const Surroundings& surroundings);

    // Settings key paths, below the current user. [any]
    [[nodiscard]] static std::string getRegistryKey(const std::string& applicationName);
    [[nodiscard]] static std::string getMainRegistryKey() { return getRegistryKey(APPLICATION_NAME); }
    // True when the key opens and holds a "ProgDir". [backend]
    [[nodiscard]] static bool registryKeyExists(const Surroundings& surroundings, const std::string& key);

    // The name of the virtual MIDI port. [any]
    [[nodiscard]] static std::string getQelPortName() { return "Tembrel"; }

    // The system's handle of our own module. [any]
    [[nodiscard]] static void* getDllInstance();
    // True when there is an input device of the port's name. [any]
    [[nodiscard]] static bool virtualMidiPortExists();

    // Opens the manual at one of its pages, empty: at its start; false when that failed. [any]
    static bool showManual(const Surroundings& surroundings, const std::string& page = {});

    // Factory files (FactoryFiles). [any]
    static void copyFiles(const Surroundings& surroundings, const std::filesystem::path& target,
                          const std::string& folder);
    static void removeFiles(const Surroundings& surroundings, const std::filesystem::path& target,
                            const std::string& folder);

    // Installation. What goes wrong with the port is said in message boxes (MidiPortDriver). [any]
    static void install(const Surroundings& surroundings, bool withPort);
    // Takes away the factory's files, the recorder's buffers, the lists of ports, the port's driver, and the folders
    // that are empty then. What the user made stays.
    static void uninstall(const Surroundings& surroundings);
    // Does nothing when the port exists.
    static void installMidiPort(const Surroundings& surroundings);
    static void uninstallMidiPort(const Surroundings& surroundings);
};

} // namespace Backend
