#include "brdlib/AppletProcess.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"
#include "brdlib/binding/SharedLibrary.h"

namespace orvo::cognex {

namespace {

// Numbers that the board library publishes.
constexpr int32_t kParameterDmaCount = 3050;
constexpr int32_t kParameterCamPortCount = 3060;
constexpr int32_t kParameterDmaId = 3080;
constexpr int32_t kParameterCamIndex = 3090;
constexpr int32_t kInformationAppletFile = 1300;
constexpr int32_t kNoInfoFunction = -2001;

using InfoFunction = int32_t(int64_t, int64_t, int64_t, int64_t, int64_t);
constexpr int64_t kInfoDmaCount = 1872;   // what `Info` is asked for

/// What the applet's own file says of its DMA ports: their count, or a negative error.
int32_t dmaCountOfAppletFile(void* handle)
{
    std::array<char, 256> path{};
    auto length = static_cast<uint32_t>(path.size());
    Brd_getSystemInformation(handle, kInformationAppletFile, 0, 0, path.data(), &length);
    path.back() = '\0';
    const SharedLibrary file(path.data(), SharedLibrary::Unload::OnDestruction);
    if (!file.isLoaded())
        throw AIKException("Applet dll can not be loaded.");
    const auto info = reinterpret_cast<InfoFunction*>(file.symbol("Info"));
    return info ? info(kInfoDmaCount, 0, 0, 0, 0) : kNoInfoFunction;
}

}   // namespace

std::shared_ptr<AppletProcess> AppletProcess::create(uint32_t index, void* handle)
{
    return std::make_shared<AppletProcess>(index, handle);
}

AppletProcess::AppletProcess(uint32_t index, void* handle)
    : m_index(index), m_handle(handle), m_features(std::make_shared<FeatureContainer>())
{}

AppletProcess::~AppletProcess()
{
    for (auto& port : m_dmaPorts)
        port.reset();   // in their order, which the vector alone doesn't promise
}

void AppletProcess::start()
{
    if (m_dmaPorts.empty())
        throw std::runtime_error("No dma created!");
    for (const auto& port : m_dmaPorts)
        port->start();
}

void AppletProcess::stop()
{
    for (const auto& port : m_dmaPorts)
        port->stop();
}

std::shared_ptr<DmaPort> AppletProcess::createDmaPort(uint32_t dmaId)
{
    auto port = std::make_shared<DmaPort>();
    port->setBoardHandle(m_handle);
    port->setDmaIndex(static_cast<int32_t>(dmaId));
    return port;
}

void AppletProcess::createDmaPorts()
{
    const uint32_t count = dmaCount();
    for (uint32_t position = 0; position < count; ++position) {
        try {
            m_dmaPorts.push_back(createDmaPort(dmaId(position)));
        } catch (...) {   // one port less is no reason to lose the others
        }
    }
}

uint32_t AppletProcess::dmaCount() const
{
    uint32_t count = 0;
    int32_t status = Brd_getParameterWithType(m_handle, kParameterDmaCount, &count, m_index, kTypeOfCounts);
    if (status == kParameterNotInApplet) {
        if (m_index != 0)
            return 0;
        const int32_t answer = dmaCountOfAppletFile(m_handle);
        status = std::min(answer, 0);
        count = static_cast<uint32_t>(std::max(answer, 0));
    }
    if (status != 0)
        throw std::runtime_error("Cannot get the number of dma ports");
    return plausibleCount(count);
}

uint32_t AppletProcess::dmaId(uint32_t position) const
{
    uint32_t id = position;
    const int32_t status = Brd_getParameter(m_handle, kParameterDmaId, &id, m_index);
    // An applet without this parameter leaves the word alone: then position and number are the same.
    if (status != 0 && static_cast<int32_t>(id) < 0)
        throw std::runtime_error("Cannot get dma id");
    return id;
}

uint32_t AppletProcess::camIndex(uint32_t position) const
{
    uint32_t index = position;
    if (Brd_getParameter(m_handle, kParameterCamIndex, &index, m_index) != 0)
        throw std::runtime_error("Cannot get cam index");
    return index;
}

uint32_t AppletProcess::camPortCount() const
{
    uint32_t count = 0;
    if (Brd_getParameterWithType(m_handle, kParameterCamPortCount, &count, m_index, kTypeOfCounts) != 0)
        throw std::runtime_error("Cannot get the number of cam ports");
    return plausibleCount(count);
}

std::weak_ptr<DmaPort> AppletProcess::dmaPortAt(int32_t position) const
{
    if (position < 0 || static_cast<size_t>(position) >= m_dmaPorts.size())
        return {};
    return m_dmaPorts[static_cast<size_t>(position)];
}

std::weak_ptr<DmaPort> AppletProcess::dmaPortById(uint32_t id) const
{
    const auto port = std::find_if(m_dmaPorts.begin(), m_dmaPorts.end(), [&](const auto& candidate) {
        return static_cast<uint32_t>(candidate->dmaIndex()) == id;
    });
    return port == m_dmaPorts.end() ? std::weak_ptr<DmaPort>() : *port;
}

void AppletProcess::setupAll()
{
    for (const auto& port : m_dmaPorts)
        port->setup();
}

void AppletProcess::setOnAll(void (DmaPort::*set)(uint32_t), uint32_t value)
{
    for (const auto& port : m_dmaPorts)
        ((*port).*set)(value);
}

void AppletProcess::setWidth(uint32_t width)
{
    setOnAll(&DmaPort::setWidth, width);
}

void AppletProcess::setHeight(uint32_t height)
{
    setOnAll(&DmaPort::setHeight, height);
}

void AppletProcess::setXOffset(uint32_t offset)
{
    setOnAll(&DmaPort::setXOffset, offset);
}

void AppletProcess::setYOffset(uint32_t offset)
{
    setOnAll(&DmaPort::setYOffset, offset);
}

std::shared_ptr<AppletProcess> locked(const std::weak_ptr<AppletProcess>& process)
{
    return lockedOrThrow(process, "No applet is loaded!");
}

}   // namespace orvo::cognex
