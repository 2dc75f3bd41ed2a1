#pragma once

#include <string>

namespace orvo::aikctl {

/// Makes sure that the adapter at `adapterPath`, absolute, and the board library that it will load are there:
/// an adapter that doesn't find that library ends the whole process at its first call. Throws runtime_error
/// that says what is missing and where it was looked for.
void requireLibraries(const std::string& adapterPath);

}   // namespace orvo::aikctl
