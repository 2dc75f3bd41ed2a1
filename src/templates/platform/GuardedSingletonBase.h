#pragma once

namespace orvo::templates::platform {

/// What LibraryInitController needs to end a singleton.
struct GuardedSingletonBase {
    /// Called right before the destruction.
    virtual void preDestruction() {}
    /// The process-wide variable that holds the instance; it is set to null after the destruction.
    virtual GuardedSingletonBase** instanceAddress() = 0;
    virtual ~GuardedSingletonBase() = default;
};

}   // namespace orvo::templates::platform
