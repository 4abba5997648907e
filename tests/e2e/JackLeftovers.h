// What killed test runs have left in the memory that JACK's servers share.
#pragma once

#include <string>
#include <sys/types.h>

// The name of the server that a test process starts.
[[nodiscard]] std::string testServerName(pid_t process);

// Gives back the places of test servers whose process and whose test are both gone, and removes their files: JACK has
// places for eight servers in all. Each place is taken again and left in good order. `folder` takes the output.
void clearJackLeftovers(const std::string& folder);
