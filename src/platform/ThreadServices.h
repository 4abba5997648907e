// Per-thread initialisation that a system wants before XML is read or documents are opened.
#pragma once

namespace Platform {

void initializeThreadServices() noexcept;   // CoInitialize on Windows, nothing elsewhere
void uninitializeThreadServices() noexcept; // CoUninitialize on Windows, nothing elsewhere

} // namespace Platform
