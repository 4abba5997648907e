#include "host/ImportCommand.h"

#include "backend/Version2Import.h"
#include "platform/PathText.h"

#include <iostream>

namespace Host {

ImportCommand::ImportCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("import", "Convert a bank, program or preset of version 2")) {
    verb_->add_option("SOURCE", source_, "The version-2 file")->required();
    verb_->add_option("DESTINATION", destination_, "The file to write: .bnk, .prg or .pst")->required();
}

int ImportCommand::run() {
    const auto imported = Backend::importVersion2(Platform::pathOf(source_), Platform::pathOf(destination_));
    if (!imported) {
        std::cerr << imported.fault().text() << '\n';
        return 1;
    }
    for (const Platform::Fault& line : imported.value().notTaken) {
        std::cerr << line.text() << '\n'; // said, and imported without
    }
    return 0;
}

} // namespace Host
