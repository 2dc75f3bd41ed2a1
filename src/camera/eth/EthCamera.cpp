#include "camera/eth/EthCamera.h"

#include <stdexcept>

#include "camera/eth/EthLibrary.h"

namespace orvo::cognex {

namespace {

constexpr size_t kNameOffset = 32;   // of the name, a text, in the library's record of a camera

}   // namespace

EthCamera::EthCamera(uint64_t handle) : LibraryCamera(kEthLibrary, handle) {}

EthCamera::~EthCamera()
{
    Eth_releaseCamera(handle());   // also when it is 0: a disconnect has ended the handle then
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

}   // namespace orvo::cognex
