// What an installer calls in the library: by these names, each returning 0.
#pragma once

extern "C" {
// Installs with the virtual MIDI port, or without it.
int commitPort();
int commitNoPort();
int uninstall();
}
