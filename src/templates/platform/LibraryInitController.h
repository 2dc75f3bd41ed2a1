#pragma once

#include <vector>

#include "templates/platform/GuardedSingletonBase.h"

namespace orvo::templates::platform {

/// Counts the uses of the support library and destroys its singletons, in the order of their creation, with
/// the last one. Exists only while the count is above 0. Any thread.
class LibraryInitController {
public:
    using CleanUp = void (*)();

    /// Begins a use.
    static void init();
    /// Ends a use. The last one calls the clean-up functions and destroys the singletons.
    static void deinit();

    /// Enters a singleton that has just been made. With no use counted it is not entered and never destroyed.
    static void registerSingleton(GuardedSingletonBase* singleton);
    /// Enters a function that the last deinit() calls before the singletons go. Dropped with no use counted.
    static void addCleanUp(CleanUp function);

    /// Writes each step to standard output. Off; meant to be switched on from a debugger.
    static bool s_consoleTrace;

private:
    void destroySingletons();

    std::vector<GuardedSingletonBase*> m_singletons;
    std::vector<CleanUp> m_cleanUps;
};

}   // namespace orvo::templates::platform
