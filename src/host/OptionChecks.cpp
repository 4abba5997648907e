#include "host/OptionChecks.h"

#include "values/TextNumbers.h"

#include <string>

namespace Host {

CLI::Validator atLeast(int least) {
    return {[least](const std::string& text) {
                const auto number = readDecimal(text);
                const bool isAccepted = number && isDecimal(text) && *number >= least;
                return isAccepted ? std::string() : text + " is no number from " + std::to_string(least) + " on";
            },
            "FROM " + std::to_string(least)};
}

} // namespace Host
