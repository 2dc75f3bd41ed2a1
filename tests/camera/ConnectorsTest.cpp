// What no host reaches: its channels keep the applet loaded, have one process each, and refuse a command that is
// not available before a connector sees it.
#include <set>

#include "camera/eth/EthCamera.h"
#include "camera/eth/EthCameraConnector.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcCameraConnector.h"
#include "channels/CameraFamilies.h"
#include "tests/camera/LoadedCameras.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using namespace cognex;

template <typename Wanted, typename Made>
bool isA(const std::unique_ptr<Made>& made)
{
    return dynamic_cast<Wanted*>(made.get()) != nullptr;
}

class Connectors : public LoadedCameras {
protected:
    std::unique_ptr<CameraConnector> connector() const
    {
        return createCameraConnector(board, board->applet());
    }
    static std::string initializing(CameraConnector& connector)
    {
        return aikFailure([&] { connector.features().lock()->execute("InitializeCameraConnector"); });
    }
};

TEST_F(Connectors, GoByTheTypeOfTheBoard)
{
    const std::set<int32_t> kEth = {2897, 2898, 2899, 3650, 3652};
    const std::set<int32_t> kOgc = {1872, 1873, 1874, 1875, 1876,  1877,  1878,  1879,  1880, 1881, 2624,
                                    2625, 2626, 2627, 2628, 2629,  2641,  2642,  2643,  2644, 2645, 2646,
                                    2647, 2648, 2649, 2650, 29968, 29969, 30016, 30017, 30097};
    loadCameras(2897);
    std::set<int32_t> types = {0, 40'000};
    for (const auto& family : {kEth, kOgc})
        for (const int32_t type : family)
            types.insert({type - 1, type, type + 1});
    for (const int32_t type : types) {
        OrvoSim_answer("Brd_getBoardType", 1, type);
        std::unique_ptr<CameraConnector> made;
        const std::string failure = aikFailure([&] { made = connector(); });
        EXPECT_EQ(isA<EthCameraConnector>(made), kEth.contains(type)) << type;
        EXPECT_EQ(isA<OgcCameraConnector>(made), kOgc.contains(type)) << type;
        EXPECT_EQ(failure, made ? "no failure" : "Cam port type is not connectable.");
    }
    OrvoSim_answer("Brd_getBoardType", 1, -1);
    EXPECT_EQ(bareFailure([&] { connector(); }), "Cannot detect board type");
}

TEST_F(Connectors, HaveTheConfiguratorOfAPortsType)
{
    EXPECT_TRUE(isA<OgcCameraConfigurator>(createCameraConfigurator(0)));
    EXPECT_TRUE(isA<EthCameraConfigurator>(createCameraConfigurator(1)));
    for (const int32_t type : {-1, 2})
        EXPECT_EQ(aikFailure([&] { createCameraConfigurator(type); }), "Cam port type is unknown.");
}

TEST_F(Connectors, RefuseWorkWhileTheyAreClosedOrWithoutAnApplet)
{
    loadCameras(2897);
    auto eth = connector();
    EXPECT_EQ(aikFailure([&] { eth->close(); }), "Eth camera connector is not initialized");
    EXPECT_NO_THROW(eth->detect());   // there is nothing to search
    eth->setApplet({});
    OrvoSim_clearJournal();
    EXPECT_EQ(initializing(*eth), "Command could not be executed. (No applet is loaded!)");
    eth.reset();
    EXPECT_EQ(takeJournal("Eth_*"),
              (Lines{"Eth_openBoard boardIndex=0 zero=0 -> 0 library=0", "Eth_closeBoard library=0 -> 0"}));

    OrvoSim_answer("Brd_getBoardType", 1, 1872);
    const auto ogc = connector();
    EXPECT_EQ(aikFailure([&] { ogc->close(); }), "Camera connector is not initialized");
    EXPECT_EQ(aikFailure([&] { ogc->detect(); }), "Camera connector is not initialized.");
    ogc->setApplet({});
    EXPECT_EQ(initializing(*ogc), "Command could not be executed. (No applet is loaded!)");
    EXPECT_EQ(takeJournal("Ogc_*"), Lines());
}

TEST_F(Connectors, HaveEachPortOnceOfAllProcesses)
{
    std::vector<json> processes = {Machine::process({Machine::dma(0)}), Machine::process({Machine::dma(1)})};
    processes[0]["cameraPorts"] = {0, 1};
    processes[1]["cameraPorts"] = {1, 2};
    load(Machine::appletOf(processes), boardWithCameras(2897));
    const auto eth = connector();
    EXPECT_EQ(initializing(*eth), "no failure");
    EXPECT_EQ(eth->state(), ConnectorState::NoCameras);
    EXPECT_EQ(reading(*eth->features().lock(), "PortCount"), "3");
    eth->detect();
    EXPECT_EQ(eth->state(), ConnectorState::CameraConnected);
}

}   // namespace

}   // namespace orvo::test
