#include "tests/sim/BoardLibrary.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/Places.h"

namespace orvo::test {

namespace {

void require(const void* found, const std::string& what)
{
    if (!found) {
        std::fprintf(stderr, "%s is missing\n", what.c_str());
        std::abort();
    }
}

}   // namespace

template <typename Function>
Function BoardLibrary::bound(const char* name) const
{
    void* const symbol = os::findSymbol(m_module, name);
    require(symbol, name);
    return reinterpret_cast<Function>(symbol);
}

BoardLibrary::BoardLibrary() : m_module(os::loadLibrary(libraryBesideUs("brdlib5")))
{
    require(m_module, libraryBesideUs("brdlib5"));
}

const BoardLibrary& BoardLibrary::instance()
{
    static const BoardLibrary* const only = new BoardLibrary;
    return *only;
}

}   // namespace orvo::test
