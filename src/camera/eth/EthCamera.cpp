#include "camera/eth/EthCamera.h"

#include <stdexcept>

#include "camera/eth/EthLibrary.h"

namespace orvo::cognex {

namespace {

constexpr size_t kNameOffset = 32;   // of the name, a text, in the library's record of a camera

// The search's arguments, in the library's own terms: every port, and a bound.
constexpr uint32_t kAllPorts = 0xFFFFFFFF;
constexpr uint32_t kSearchBound = 200;

}   // namespace

EthCamera::EthCamera(uint64_t handle) : LibraryCamera(kEthLibrary, handle) {}

EthCamera::~EthCamera()
{
    Eth_releaseCamera(handle());   // 0 after a disconnect, and released all the same
}

void EthCamera::connect()
{
    kEthLibrary.check(Eth_connectCamera(handle()));
}

void EthCamera::disconnect()
{
    kEthLibrary.check(Eth_disconnectCamera(handle()));
    forgetHandle();
}

void EthCamera::startAcquisition()
{
    if (const int32_t status = Eth_startAcquisition(handle()))
        throw std::runtime_error("Eth_startAcquisition failed: " + ethErrorText(status));
}

void EthCamera::stopAcquisition()
{
    if (const int32_t status = Eth_stopAcquisition(handle()))
        throw std::runtime_error("Eth_stopAcquisition failed: " + ethErrorText(status));
}

void EthCamera::setWidth(int32_t width)
{
    if (const int32_t status = Eth_setIntegerValue(handle(), "Width", width))
        throw std::runtime_error("Eth cannot set width: " + ethErrorText(status));
}

void EthCamera::setHeight(int32_t height)
{
    parameters().setInteger("Height", height);
}

std::string EthCamera::getName()
{
    const void* const record = Eth_getCameraInfo(handle());
    return record ? static_cast<const char*>(record) + kNameOffset : "";
}

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
    return {connect(std::make_shared<EthCamera>(handle))};
}

}   // namespace orvo::cognex
