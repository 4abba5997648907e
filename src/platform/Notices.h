// Telling the user and the developer something outside any window of ours.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Platform {

// One line for the debugger (Windows) or standard error (Linux, only while the environment variable TEMBREL_TRACE
// is set). [any]
void writeDebugOutput(const std::string& line) noexcept;
// Replaces what writeDebugOutput does, for tests; empty: the default again. The handler is called by any thread.
void setDebugOutputHandler(std::function<void(const std::string& line)> handler);

// Shows a message to the user: a modal box, or standard error where there is no box to show. [any]
void showMessageBox(const std::string& text, const std::string& caption);
// Replaces what showMessageBox does, for programs with a window of their own and for tests; empty: the default again.
void setMessageBoxHandler(std::function<void(const std::string& text, const std::string& caption)> handler);

// Opens a document with the program that the user has chosen for its kind; false when there is no such document or
// no program could be started. Does not wait for that program. [any]
bool openDocument(const std::filesystem::path& document);

} // namespace Platform
