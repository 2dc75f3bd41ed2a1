#pragma once

#include "os/Os.h"
#include "sim/brdlib5/brdlib5.h"

namespace orvo::test {

/// The board library beside this program, loaded by its path and bound by name. Fails hard if it can't be.
class BoardLibrary {
    os::Module m_module;

    template <typename Function>
    Function bound(const char* name) const;

public:
    BoardLibrary();
    static const BoardLibrary& instance();

// NOLINTNEXTLINE(bugprone-macro-parentheses): a name that is declared can't stand in any
#define BOUND(name) decltype(&::name) name = bound<decltype(&::name)>(#name)
    BOUND(Brd_InitLibraries);
    BOUND(Brd_FreeLibraries);
    BOUND(Brd_getBoardType);
    BOUND(Brd_getBoardNameByType);
    BOUND(Brd_getSystemInformation);
    BOUND(Brd_InitEx);
    BOUND(Brd_InitConfigEx);
    BOUND(Brd_FreeGrabber);
    BOUND(Brd_getLastErrorNumber);
    BOUND(Brd_getLastErrorDescription);
    BOUND(Brd_getParameterIdByName);
    BOUND(Brd_getParameter);
    BOUND(Brd_setParameter);
    BOUND(Brd_getParameterWithType);
    BOUND(Brd_setParameterWithType);
    BOUND(Brd_getParameterEx);
    BOUND(Brd_getParameterProperty);
    BOUND(Brd_getParameterPropertyEx);
    BOUND(Brd_AllocMemHead);
    BOUND(Brd_AddMem);
    BOUND(Brd_DelMem);
    BOUND(Brd_FreeMemHead);
    BOUND(Brd_registerApcHandler);
    BOUND(Brd_AcquireEx);
    BOUND(Brd_stopAcquireEx);
    BOUND(Brd_getImageEx);
    BOUND(Brd_getImagePtrEx);
    BOUND(Brd_getStatusEx);
    BOUND(Brd_setStatusEx);
#undef BOUND
};

}   // namespace orvo::test
