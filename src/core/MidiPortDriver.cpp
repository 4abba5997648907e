#include "core/MidiPortDriver.h"

#include "core/SettingsText.h"
#include "platform/Notices.h"
#include "values/Words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>

namespace Backend {

using Platform::SettingsKey;
using Platform::SettingsRoot;
using Platform::SettingsStore;
using Platform::SettingsValue;

namespace {

constexpr std::array driverKeys = {"Software\\Microsoft\\Windows NT\\CurrentVersion\\Drivers32",
                                   "Software\\Microsoft\\Windows NT\\CurrentVersion\\userinstallable.drivers",
                                   "Software\\Microsoft\\Windows NT\\CurrentVersion\\drivers.desc"};
constexpr std::string_view prefix = "midi";
constexpr const char* errorCaption = "ERROR";

// Value names are the same in any case, as the settings store has it.
bool isMidiDriver(std::string_view name) {
    return name.size() > prefix.size() && equalInAnyCase(name.substr(0, prefix.size()), prefix);
}

// 0 where no number follows, or one that no driver has.
int numberOf(std::string_view name) {
    int number = 0;
    std::from_chars(name.data() + prefix.size(), name.data() + name.size(), number);
    return std::max(number, 0);
}

std::string nextName(SettingsKey& drivers, SettingsKey& userDrivers) {
    int largest = 0;
    for (SettingsKey* const key : {&drivers, &userDrivers}) {
        for (const std::string& name : key->names()) {
            largest = isMidiDriver(name) ? std::max(largest, numberOf(name)) : largest;
        }
    }
    return std::string(prefix) + std::to_string(static_cast<long long>(largest) + 1);
}

} // namespace

void MidiPortDriver::install(SettingsStore& settings, const char* portName) {
    std::array<std::unique_ptr<SettingsKey>, driverKeys.size()> keys;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i] = settings.openOrCreate(SettingsRoot::localMachine, driverKeys[i]);
        if (!keys[i]) {
            Platform::showMessageBox("Couldn't open/create registry key (" + std::to_string(i + 1) + ")", errorCaption);
            return;
        }
    }
    const std::string name = nextName(*keys[0], *keys[1]);
    struct Value {
        std::string name;
        const char* text;
    };
    const std::array<Value, driverKeys.size()> values = {Value{name, FILE_NAME}, Value{name, FILE_NAME},
                                                         Value{FILE_NAME, portName}};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (const long error = keys[i]->write(values[i].name, SettingsValue::ofString(values[i].text)); error != 0) {
            Platform::showMessageBox("Couldn't set registry value (" + std::to_string(i + 1) +
                                         "). Return value = " + std::to_string(error),
                                     errorCaption);
        }
    }
    keys = {};
    Platform::showMessageBox("You must restart Windows before using the virtual midi port", "Tembrel 3 Install");
}

void MidiPortDriver::uninstall(SettingsStore& settings) {
    std::array<std::unique_ptr<SettingsKey>, driverKeys.size()> keys;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i] = settings.open(SettingsRoot::localMachine, driverKeys[i]);
    }
    if (keys[0]) {
        for (const std::string& name : keys[0]->names()) {
            const auto value = isMidiDriver(name) ? keys[0]->read(name) : std::nullopt;
            if (value && storedText(*value) == FILE_NAME) {
                keys[0]->remove(name);
                if (keys[1]) {
                    keys[1]->remove(name);
                }
            }
        }
    }
    if (keys[2]) {
        keys[2]->remove(FILE_NAME);
    }
}

} // namespace Backend
