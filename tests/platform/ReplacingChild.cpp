#include "platform/ReplacingChild.h"

#include "platform/OwnProgram.h"
#include "platform/SafeFiles.h"
#include "platform/Threads.h"

#include <cstdlib>

namespace {

constexpr int tornAway = 42;

} // namespace

std::string contentOfTurn(int turn) {
    const std::string piece = std::to_string(turn) + "\n";
    std::string content;
    for (int i = 0; i <= turn % 7 * 5000; ++i) {
        content += piece;
    }
    return content;
}

int runReplacingChild(int argc, char** argv) {
    if (argc != 4) {
        return 2;
    }
    Platform::Thread writer([file = std::filesystem::path(argv[2])] {
        for (int turn = 1;; ++turn) {
            if (!Platform::replaceFile(file, contentOfTurn(turn))) {
                std::_Exit(3);
            }
        }
    });
    writer.resume();
    Platform::sleepMilliseconds(static_cast<unsigned>(std::atoi(argv[3])));
    std::_Exit(tornAway); // which ends the writer wherever it is
}

bool startReplacingChild(const std::filesystem::path& file, int milliseconds) {
    std::string arguments(replacingChildOption);
    arguments.append(" \"").append(file.string()).append("\" ").append(std::to_string(milliseconds));
    const int status = startOwnProgram(arguments);
    return status == tornAway || status == tornAway << 8; // as the systems' shells say it
}
