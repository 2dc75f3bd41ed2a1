#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "templates/platform/Singletons.h"

using namespace orvo::templates::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Singletons that tell what becomes of them.
class Singletons : public testing::Test {
protected:
    Singletons() { s_events.clear(); }

    static inline std::vector<std::string> s_events;
    static void cleanUp() { s_events.emplace_back("clean-up"); }

    template <char Name>
    class Telling : public GuardedSingleton<Telling<Name>> {
    public:
        Telling() { tell(" made"); }
        ~Telling() override { tell(" destroyed"); }
        void preDestruction() override { tell(" is to go"); }

    protected:
        void initialise() override { Telling::instance().tell(" initialised"); }   // the lock is recursive

    private:
        static void tell(const char* what) { s_events.push_back(Name + std::string(what)); }
    };
    using A = Telling<'A'>;
    using B = Telling<'B'>;
    using C = Telling<'C'>;
};

TEST_F(Singletons, ComeAtTheFirstUseAndGoInThatOrderWithTheLast)
{
    LibraryInitController::init();
    LibraryInitController::init();
    LibraryInitController::addCleanUp(cleanUp);
    EXPECT_EQ(&B::instance(), &B::instance());
    A::instance();
    LibraryInitController::deinit();
    EXPECT_THAT(s_events, ElementsAre("B made", "B initialised", "A made", "A initialised"));

    s_events.clear();
    LibraryInitController::deinit();
    EXPECT_THAT(s_events, ElementsAre("clean-up", "B is to go", "B destroyed", "A is to go", "A destroyed"));

    s_events.clear();
    LibraryInitController::init();
    A::instance();
    LibraryInitController::deinit();
    EXPECT_THAT(s_events, ElementsAre("A made", "A initialised", "A is to go", "A destroyed"));
}

TEST_F(Singletons, StayForGoodIfTheyCameWhileTheLibraryWasNotInUse)
{
    LibraryInitController::addCleanUp(cleanUp);
    C::instance();
    s_events.clear();
    LibraryInitController::init();
    C::instance();
    LibraryInitController::deinit();
    EXPECT_THAT(s_events, IsEmpty());
}

// Only a debugger switches the trace on, so that no export reaches these texts.
TEST_F(Singletons, CanBeTracedOnTheConsole)
{
    LibraryInitController::s_consoleTrace = true;
    testing::internal::CaptureStdout();
    LibraryInitController::init();
    LibraryInitController::init();
    LibraryInitController::deinit();
    LibraryInitController::deinit();
    LibraryInitController::s_consoleTrace = false;
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::MatchesRegex("LibraryInitController \\[Create \\] - Instance: \\w+\n"
                                      "LibraryInitController \\[Init   \\] - Instance: \\w+ - Use Count: 1\n"
                                      "LibraryInitController \\[Init   \\] - Instance: \\w+ - Use Count: 2\n"
                                      "LibraryInitController \\[Deinit \\] - Instance: \\w+ - Use Count: 1\n"
                                      "LibraryInitController \\[Deinit \\] - Instance: \\w+ - Use Count: 0\n"
                                      "LibraryInitController \\[Destroy\\] - Instance: \\w+\n"));
}

}   // namespace
