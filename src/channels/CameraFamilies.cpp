#include "channels/CameraFamilies.h"

#include "AIKException.h"
#include "brdlib/BoardWrapper.h"
#include "camera/eth/EthCamera.h"
#include "camera/eth/EthCameraConnector.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcCameraConnector.h"

namespace orvo::cognex {

namespace {

template <typename Base, typename Made>
std::unique_ptr<Base> make()
{
    return std::make_unique<Made>();
}
constexpr auto kMakeEth = make<CameraConnector, EthCameraConnector>;
constexpr auto kMakeOgc = make<CameraConnector, OgcCameraConnector>;

/// A run of board types, both ends included, by the numbers that the board library gives.
struct BoardTypes {
    int32_t first;
    int32_t last;
    std::unique_ptr<CameraConnector> (*make)();
};
constexpr BoardTypes kBoardTypes[] = {
    {2897, 2899, kMakeEth},   {3650, 3650, kMakeEth},   {3652, 3652, kMakeEth},

    {1872, 1881, kMakeOgc},   {2624, 2629, kMakeOgc},   {2641, 2650, kMakeOgc},
    {29968, 29969, kMakeOgc}, {30016, 30017, kMakeOgc}, {30097, 30097, kMakeOgc},
};

}   // namespace

std::unique_ptr<CameraConnector> createCameraConnector(const std::weak_ptr<BoardWrapper>& board,
                                                       const std::weak_ptr<AppletWrapper>& applet)
{
    const int32_t type = locked(board)->boardType();
    for (const BoardTypes& row : kBoardTypes) {
        if (type < row.first || type > row.last)
            continue;
        auto connector = row.make();
        connector->setApplet(applet);
        connector->setBoard(board);
        return connector;
    }
    throw AIKException("Cam port type is not connectable.");
}

std::unique_ptr<CameraConfigurator> createCameraConfigurator(int32_t portType)
{
    switch (portType) {
    case 0:
        return std::make_unique<OgcCameraConfigurator>();
    case 1:
        return std::make_unique<EthCameraConfigurator>();
    default:
        throw AIKException("Cam port type is unknown.");
    }
}

}   // namespace orvo::cognex
