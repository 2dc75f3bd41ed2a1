#include "tests/support/BoardLibraryFake.h"

namespace orvo::test {

namespace {

BoardLibraryFake* g_fake = nullptr;

}   // namespace

BoardLibraryFake::BoardLibraryFake()
{
    g_fake = this;
}

BoardLibraryFake::~BoardLibraryFake()
{
    g_fake = nullptr;
}

}   // namespace orvo::test

namespace orvo::cognex {

#define ORVO_FORWARD(how, Result, ifMissing, name, parameters, arguments)                                    \
    Result name parameters                                                                                   \
    {                                                                                                        \
        return test::g_fake->name arguments;                                                                 \
    }
ORVO_BRD_FUNCTIONS(ORVO_FORWARD)

}   // namespace orvo::cognex
