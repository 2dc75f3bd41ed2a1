#pragma once

#include <cstdint>
#include <string>

/// The operating-system seam: what the adapter needs and what differs between Windows and Linux, one header with
/// two implementations. Callable on any thread. What only programs need is in os/Program.h.
namespace orvo::os {

using Module = void*;   // a loaded library, null for none
using Symbol = void*;   // an address inside one, null for none

extern const char kSeparator;              // between the folders of a path: '\\' or '/'
extern const char* const kLibraryEnding;   // ".dll" or ".so"

/// Where the system loader looks for the libraries that the loaded one needs itself.
enum class Neighbours {
    AsTheSystemDoes,    // the program's folder and the system's own places
    BesideTheLibrary,   // the folder of the loaded library first; the path must then be absolute
};

/// What the system said about its last failure: its number, and its text in its own language.
struct Error {
    uint32_t number = 0;
    std::string text;
};

/// Loads the library at `path`. Null on failure, and `error`, if given, then says why.
Module loadLibrary(const std::string& path, Neighbours neighbours = Neighbours::AsTheSystemDoes,
                   Error* error = nullptr);
void freeLibrary(Module module);
/// Null for a null module and for a name that the library doesn't export.
Symbol findSymbol(Module module, const char* name);

/// The full path of the library or program that holds `address`; empty if the system can't tell.
std::string modulePath(const void* address);

/// Empty for a variable that is not set. Reads the process's own environment; the C library's copy may differ
/// from it on Windows.
std::string environmentVariable(const std::string& name);

/// The system's number of the calling thread.
uint32_t currentThreadId();

}   // namespace orvo::os
