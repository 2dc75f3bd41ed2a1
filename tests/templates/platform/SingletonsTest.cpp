#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "templates/platform/Singletons.h"

using namespace orvo::templates::platform;
using testing::ElementsAre;

namespace {

std::vector<std::string> g_events;

void cleanUp()
{
    g_events.emplace_back("clean-up");
}

/// A singleton that records what becomes of it.
template <char Name>
class Recorded : public GuardedSingleton<Recorded<Name>> {
public:
    Recorded() { record(" made"); }
    ~Recorded() override { record(" destroyed"); }
    void preDestruction() override { record(" is to go"); }

protected:
    void initialise() override { Recorded::instance().record(" initialised"); }   // the lock is recursive

private:
    static void record(const char* what) { g_events.push_back(Name + std::string(what)); }
};
using A = Recorded<'A'>;
using B = Recorded<'B'>;
using C = Recorded<'C'>;

TEST(Singletons, AreMadeAtTheirFirstUseAndDestroyedInThatOrderWithTheLastUseOfTheLibrary)
{
    LibraryInitController::addCleanUp(cleanUp);   // dropped, as the library is not in use
    C::instance();                                // and this one stays for good
    g_events.clear();
    LibraryInitController::init();
    LibraryInitController::init();
    LibraryInitController::addCleanUp(cleanUp);
    EXPECT_EQ(&B::instance(), &B::instance());
    A::instance();
    C::instance();
    LibraryInitController::deinit();
    EXPECT_THAT(g_events, ElementsAre("B made", "B initialised", "A made", "A initialised"));
    g_events.clear();
    LibraryInitController::deinit();
    EXPECT_THAT(g_events, ElementsAre("clean-up", "B is to go", "B destroyed", "A is to go", "A destroyed"));

    g_events.clear();
    LibraryInitController::init();
    A::instance();
    LibraryInitController::deinit();
    EXPECT_THAT(g_events, ElementsAre("A made", "A initialised", "A is to go", "A destroyed"));
}

}   // namespace
