#pragma once

#include "templates/platform/GuardedSingletonBase.h"
#include "templates/platform/LibraryInitController.h"
#include "templates/platform/SpinLockVariableGuard.h"

namespace orvo::templates::platform {

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
            GuardedSingleton* const made = new T;
            s_instance = made;
            LibraryInitController::registerSingleton(made);
            made->initialise();
        }
        return *static_cast<T*>(s_instance);
    }

    GuardedSingletonBase** instanceAddress() override { return &s_instance; }

protected:
    /// Runs once, after the instance was stored and registered.
    virtual void initialise() {}

private:
    static inline GuardedSingletonBase* s_instance = nullptr;
    static inline SpinLockVariable s_lock{0};
    static inline SpinLockVariable s_owner{0};
};

}   // namespace orvo::templates::platform
