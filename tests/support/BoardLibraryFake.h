#pragma once

#include "brdlib/binding/BrdFunctions.h"

namespace orvo::test {

using cognex::BrdApcControl;   // the list names it bare

/// Stands at link time where the board library's forwarders stand in the product. Every function answers 0 or
/// null; a test's own class overrides what its case is about. One at a time.
class BoardLibraryFake {
public:
    BoardLibraryFake();
    BoardLibraryFake(const BoardLibraryFake&) = delete;
    BoardLibraryFake& operator=(const BoardLibraryFake&) = delete;
    virtual ~BoardLibraryFake();

#define ORVO_FAKE(how, Result, ifMissing, name, parameters, arguments)                                       \
    virtual Result name parameters                                                                           \
    {                                                                                                        \
        using Answer = Result;                                                                               \
        ignore arguments;                                                                                    \
        return Answer();                                                                                     \
    }
    ORVO_BRD_FUNCTIONS(ORVO_FAKE)
#undef ORVO_FAKE

private:
    template <typename... Arguments>
    static void ignore(const Arguments&... /*ignored*/)
    {}
};

}   // namespace orvo::test
