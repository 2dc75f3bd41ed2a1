// Numbers that no machine has: they must cost neither loops nor memory.
#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using AbsurdNumbers = SystemTest;

TEST_F(AbsurdNumbers, OfProcessesAndDmasAreNone)
{
    const uint32_t tooMany = 65'536;
    const uint32_t negative = 0x8000'0000;
    machine.boards({Machine::grabber(0), Machine::grabber(1), Machine::grabber(2)});
    for (const int board : {0, 1})
        machine.applet(board, Machine::appletOf({Machine::process({Machine::dma()})}));
    json oldApplet = Machine::appletOf({Machine::process({Machine::dma()})});
    oldApplet.update({{"lacks", {3050}}, {"info", 65536}});
    machine.applet(2, oldApplet, "old.dll");
    OrvoSim_answerWith("Brd_getParameterWithType board=0 id=3070", 0, 0, &negative, sizeof negative);
    OrvoSim_answerWith("Brd_getParameterWithType board=1 id=3050", 0, 0, &tooMany, sizeof tooMany);
    for (int32_t index = 0; index < 3; ++index) {
        EXPECT_EQ(host.start(host.opened(index)), fails("No dma channes were found"));
        EXPECT_EQ(host.record().failed, 1);
    }
    EXPECT_THAT(journal("Brd_getParameter"), testing::Not(testing::Contains(testing::HasSubstr("id=3080"))));
}

TEST_F(OneChannel, AsksForTheLargestRingWhereItsBytesFitNoNumber)
{
    OrvoSim_clearJournal();
    const char* const wrapsToZero = "576460752303423488";   // times 32 bytes
    EXPECT_THAT(host.write(id, "BufferCount", wrapsToZero).text, testing::HasSubstr("brd error code: "));
    EXPECT_THAT(journal("Brd_AllocMemHead"),
                testing::ElementsAre("Brd_AllocMemHead board=0 totalSize=18446744073709551615 "
                                     "bufferCount=576460752303423488 -> null"));
}

}   // namespace

}   // namespace orvo::test
