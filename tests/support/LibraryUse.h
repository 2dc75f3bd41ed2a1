#pragma once

#include "templates/platform/Singletons.h"

namespace orvo::test {

/// A use of the support library: singletons, and all loggers, go with it. What fetches a logger needs one, so
/// that no test leaves any for the next.
class LibraryUse {
public:
    LibraryUse() { templates::platform::LibraryInitController::init(); }
    LibraryUse(const LibraryUse&) = delete;
    LibraryUse& operator=(const LibraryUse&) = delete;
    ~LibraryUse() { templates::platform::LibraryInitController::deinit(); }
};

}   // namespace orvo::test
