#pragma once

#include <string>

namespace orvo::aikctl {

/// Makes sure that the adapter at `adapterPath`, absolute, is there, and what it needs: the board library,
/// without which it would end the whole process at its first call, and the camera libraries, without which the
/// system refuses to load it and doesn't say what is missing. Throws runtime_error that says what is missing and
/// where it was looked for. The camera libraries stay loaded.
void requireLibraries(const std::string& adapterPath);

}   // namespace orvo::aikctl
