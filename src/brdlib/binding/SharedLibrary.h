#pragma once

#include <memory>
#include <string>

#include "os/Os.h"

namespace orvo::cognex {

/// A library that is loaded at run time: the board library, the logging dispatcher, an applet's own file.
/// A failed load is kept and not thrown.
class SharedLibrary {
public:
    enum class Unload {
        Never,   // the code stays, and so do all addresses taken from it
        OnDestruction,
    };

    /// Loads at once.
    SharedLibrary(const std::string& path, Unload unload);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    bool isLoaded() const { return m_module != nullptr; }
    /// Null if the library is not loaded or has no such name.
    os::Symbol symbol(const char* name) const { return os::findSymbol(m_module, name); }
    /// Why the load failed: 0 and no text after a good one.
    const os::Error& error() const { return m_error; }

private:
    os::Error m_error;
    os::Module m_module;
    Unload m_unload;
};

/// The folder of the installation, or null if nothing tells it: that of this module if it lies below a folder
/// of libraries, else "ORVODIR5_64", else "ORVODIR5". Found once and kept; a miss is looked for again at the
/// next call. Any thread. The text lives as long as the process.
const char* installationDirectory();

/// Loads the library `name` from the folder "bin" of `directory`, or of the installation for null. The
/// library stays loaded for good. Null if there is no such directory or the load failed.
std::unique_ptr<SharedLibrary> openLibrary(const char* name, const char* directory);

}   // namespace orvo::cognex
