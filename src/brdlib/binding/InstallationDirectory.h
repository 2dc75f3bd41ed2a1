#pragma once

#include <memory>

#include "brdlib/binding/SharedLibrary.h"

namespace orvo::cognex {

/// The folder of the installation, or null if nothing tells it: that of this module if it lies below a folder
/// of libraries, else "ORVODIR5_64", else "ORVODIR5". Found once and kept; a miss is looked for again at the
/// next call. Any thread. The text lives as long as the process.
const char* installationDirectory();

/// Loads the library `name` from the folder "bin" of `directory`, or of the installation for null. The
/// library stays loaded for good. Null if there is no such directory or the load failed.
std::unique_ptr<SharedLibrary> openLibrary(const char* name, const char* directory);

}   // namespace orvo::cognex
