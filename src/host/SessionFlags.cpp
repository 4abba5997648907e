#include "host/SessionFlags.h"

#include "host/OptionChecks.h"

namespace Host {

void addSessionOptions(CLI::App& verb, SessionOptions& options) {
    verb.add_option("--program", options.program, "Start from this program file")->type_name("FILE");
    verb.add_option("--bank", options.bank, "Start from this bank file")->type_name("FILE");
    verb.add_option("--slot", options.slot, "Start from this program of the bank, counted from 0")
        ->type_name("N")
        ->check(atLeast(0));
    verb.add_option("--tempo", options.tempo, "Start with this tempo, 10 to 500 beats a minute")
        ->type_name("BPM")
        ->check(CLI::Range(10, 500));
    verb.add_option("--data", options.data, "Folder for the program's data and settings, instead of the user's")
        ->type_name("DIR");
}

} // namespace Host
