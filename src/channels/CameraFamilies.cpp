#include "channels/CameraFamilies.h"

#include <algorithm>
#include <iterator>

#include "AIKException.h"
#include "brdlib/BoardWrapper.h"
#include "camera/eth/EthCamera.h"
#include "camera/eth/EthCameraConnector.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcCameraConnector.h"

namespace orvo::cognex {

namespace {

/// A range of board types, both ends included, by the numbers that the board library gives.
struct BoardTypes {
    int32_t first = 0;
    int32_t last = -1;   // below `first`: no type at all, which fills up the rows
};

struct CameraFamily {
    std::unique_ptr<CameraConnector> (*makeConnector)();
    std::unique_ptr<CameraConfigurator> (*makeConfigurator)();
    int32_t portType;
    BoardTypes boards[6];

    bool has(int32_t boardType) const
    {
        return std::any_of(std::begin(boards), std::end(boards), [&](const BoardTypes& types) {
            return types.first <= boardType && boardType <= types.last;
        });
    }
};

template <typename Base, typename Made>
std::unique_ptr<Base> make()
{
    return std::make_unique<Made>();
}

// clang-format off
constexpr CameraFamily kFamilies[] = {
    {make<CameraConnector, EthCameraConnector>, make<CameraConfigurator, EthCameraConfigurator>, 1,
     {{2897, 2899}, {3650, 3650}, {3652, 3652}}},
    {make<CameraConnector, OgcCameraConnector>, make<CameraConfigurator, OgcCameraConfigurator>, 0,
     {{1872, 1881}, {2624, 2629}, {2641, 2650}, {29968, 29969}, {30016, 30017}, {30097, 30097}}},
};
// clang-format on

/// The first family that satisfies `condition`. Throws AIKException with the text where there is none.
template <typename Condition>
const CameraFamily& findFamily(Condition condition, const char* failure)
{
    const auto* const family = std::find_if(std::begin(kFamilies), std::end(kFamilies), condition);
    if (family == std::end(kFamilies))
        throw AIKException(failure);
    return *family;
}

}   // namespace

std::unique_ptr<CameraConnector> createCameraConnector(const std::weak_ptr<BoardWrapper>& board,
                                                       const std::weak_ptr<AppletWrapper>& applet)
{
    const int32_t type = locked(board)->boardType();
    const CameraFamily& family =
        findFamily([&](const CameraFamily& candidate) { return candidate.has(type); },
                   "Cam port type is not connectable.");
    auto connector = family.makeConnector();
    connector->setApplet(applet);
    connector->setBoard(board);
    return connector;
}

std::unique_ptr<CameraConfigurator> createCameraConfigurator(int32_t portType)
{
    return findFamily([&](const CameraFamily& candidate) { return candidate.portType == portType; },
                      "Cam port type is unknown.")
        .makeConfigurator();
}

}   // namespace orvo::cognex
