#include "tests/system/CameraTest.h"

namespace orvo::test {

void CameraTest::openBoard(const CameraFamily& family, const std::vector<int>& cameras,
                           const std::vector<int>& ports)
{
    json board = Machine::grabber(0, family.boardType);
    board["cameras"] = json::array();
    for (const int port : cameras)
        board["cameras"].push_back(cameraAt(port));
    json process = Machine::process({Machine::dma(0), Machine::dma(1)});
    process["cameraPorts"] = ports;
    machine.boards({board});
    machine.applet(0, Machine::appletOf({process}));
    id = host.opened(0);
    neighbour = host.opened(1);
    OrvoSim_clearJournal();
}

void CameraTest::describeBothFamilies(const json& camera, const std::vector<json>& dmas)
{
    std::vector<json> boards = {Machine::grabber(0, kGigEVision.boardType),
                                Machine::grabber(1, kGenICam.boardType)};
    for (json& board : boards) {
        board["cameras"] = std::vector<json>{camera};
        machine.applet(board["index"], Machine::appletOf({Machine::process(dmas)}));
    }
    machine.boards(boards);
}

void CameraTest::connect()
{
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    ASSERT_EQ(execute("Detect"), done());
    OrvoSim_clearJournal();
}

Answer CameraTest::read(const char* feature, const char* key)
{
    EXPECT_EQ(write("CameraFeatureKey", key), done());
    return read(feature);
}

Answer CameraTest::write(const char* feature, const char* key, const char* value)
{
    EXPECT_EQ(write("CameraFeatureKey", key), done());
    return write(feature, value);
}

}   // namespace orvo::test
