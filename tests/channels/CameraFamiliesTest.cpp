#include <set>

#include <gtest/gtest.h>

#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "camera/CameraConfigurator.h"
#include "camera/eth/EthCameraConfigurator.h"
#include "camera/eth/EthCameraConnector.h"
#include "camera/ogc/OgcCameraConfigurator.h"
#include "camera/ogc/OgcCameraConnector.h"
#include "channels/CameraFamilies.h"
#include "tests/support/BoardLibraryFake.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::bareFailure;

class BoardOfType : public test::BoardLibraryFake {
public:
    int32_t type = 0;
    int32_t Brd_getBoardType(int32_t /*boardIndex*/) override { return type; }
};

TEST(CameraFamilies, GoByTheTypeOfTheBoard)
{
    const std::set<int32_t> kEth = {2897, 2898, 2899, 3650, 3652};
    const std::set<int32_t> kOgc = {1872, 1873, 1874, 1875, 1876,  1877,  1878,  1879,  1880, 1881, 2624,
                                    2625, 2626, 2627, 2628, 2629,  2641,  2642,  2643,  2644, 2645, 2646,
                                    2647, 2648, 2649, 2650, 29968, 29969, 30016, 30017, 30097};
    const test::LibraryUse use;
    BoardOfType library;
    const std::shared_ptr<BoardWrapper> board = BoardWrapper::create(0);
    for (library.type = 0; library.type < 40'000; ++library.type) {
        std::unique_ptr<CameraConnector> connector;
        const std::string failure = aikFailure([&] { connector = createCameraConnector(board, {}); });
        EXPECT_EQ(dynamic_cast<EthCameraConnector*>(connector.get()) != nullptr, kEth.contains(library.type));
        EXPECT_EQ(dynamic_cast<OgcCameraConnector*>(connector.get()) != nullptr, kOgc.contains(library.type));
        EXPECT_EQ(failure, connector ? "no failure" : "Cam port type is not connectable.");
    }
    library.type = -1;
    EXPECT_EQ(bareFailure([&] { createCameraConnector(board, {}); }), "Cannot detect board type");
}

TEST(CameraFamilies, GiveTheConfiguratorOfAPortsType)
{
    EXPECT_TRUE(dynamic_cast<OgcCameraConfigurator*>(createCameraConfigurator(0).get()));
    EXPECT_TRUE(dynamic_cast<EthCameraConfigurator*>(createCameraConfigurator(1).get()));
    for (const int32_t type : {-1, 2})
        EXPECT_EQ(aikFailure([&] { createCameraConfigurator(type); }), "Cam port type is unknown.");
}

}   // namespace

}   // namespace orvo::cognex
