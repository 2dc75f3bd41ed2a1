#pragma once

#include <memory>
#include <vector>

#include "templates/platform/Locks.h"

namespace orvo::templates::platform {

/// What LibraryInitController needs to end a singleton.
struct GuardedSingletonBase {
    /// Called right before the destruction.
    virtual void preDestruction() {}
    /// The process-wide variable that holds the instance; it is set to null after the destruction.
    virtual GuardedSingletonBase** instanceAddress() = 0;
    virtual ~GuardedSingletonBase() = default;
};

/// Counts the uses of the support library. With the last one it destroys the singletons, in the order of their
/// creation. Exists only while the count is above 0. Any thread.
class LibraryInitController {
public:
    using CleanUp = void (*)();

    /// Begins a use. Counts nothing if there is no memory for the controller.
    static void init();
    /// Ends a use. The last one calls the clean-up functions and destroys the singletons.
    static void deinit();

    /// Enters a singleton that has just been made. With no use counted it is not entered and never destroyed.
    static void registerSingleton(GuardedSingletonBase* singleton);
    /// Enters a function that the last deinit() calls before the singletons go. Dropped with no use counted.
    static void addCleanUp(CleanUp function);

    /// Writes each step to standard output. Off; a debugger can switch it on.
    static bool s_consoleTrace;

private:
    void destroySingletons();

    std::vector<GuardedSingletonBase*> m_singletons;
    std::vector<CleanUp> m_cleanUps;
};

/// A process-wide object of class `T` that comes into being at its first use and goes with the last use of
/// LibraryInitController, not at the end of the process. The next use after that makes a new one.
template <typename T>
class GuardedSingleton : public GuardedSingletonBase {
public:
    /// Any thread. The lock is recursive, so initialise() may call this again.
    static T& instance()
    {
        const SpinLockVariableGuard guard(s_lock, &s_owner);
        if (!s_instance) {
            std::unique_ptr<GuardedSingleton> made = std::make_unique<T>();
            // First of all: an instance that is not registered would never go.
            LibraryInitController::registerSingleton(made.get());
            s_instance = made.get();
            made.release()->initialise();
        }
        return *static_cast<T*>(s_instance);
    }

    GuardedSingletonBase** instanceAddress() override { return &s_instance; }

protected:
    /// Runs once, after the instance was stored and registered.
    virtual void initialise() {}

private:
    static inline SpinLockVariable s_lock{0};
    static inline GuardedSingletonBase* s_instance = nullptr;
    static inline SpinLockVariable s_owner{0};
};

}   // namespace orvo::templates::platform
