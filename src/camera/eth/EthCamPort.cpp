#include "camera/eth/EthCamPort.h"

#include <stdexcept>

#include "camera/eth/EthCamera.h"
#include "camera/eth/EthLibrary.h"

namespace orvo::cognex {

namespace {

// What the search is given, in the library's own terms: every port, and a bound.
constexpr uint32_t kAllPorts = 0xFFFFFFFF;
constexpr uint32_t kSearchBound = 200;

}   // namespace

std::shared_ptr<Camera> EthCamPort::connect(std::shared_ptr<Camera> camera)
{
    camera->connect();
    return camera;
}

std::vector<std::shared_ptr<Camera>> EthCamPort::detect()
{
    kEthLibrary.check(Eth_scanPorts(m_library, kAllPorts, kSearchBound));
    const auto port = static_cast<uint32_t>(portIndex());
    const int32_t count = Eth_getCameraCount(m_library, port);
    if (count < 0)
        throw std::runtime_error("Eth_getCameraCount failed: " + ethErrorText(count));
    if (count == 0)
        return {};
    uint64_t handle = 0;
    if (const int32_t status = Eth_getCameraByIndex(m_library, port, 0, &handle))
        throw std::runtime_error("Eth_getCameraByIndex failed: " + ethErrorText(status));
    const auto camera = std::make_shared<EthCamera>(handle);
    camera->connect();
    return {camera};
}

}   // namespace orvo::cognex
