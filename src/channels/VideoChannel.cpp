#include "channels/VideoChannel.h"

#include <stdexcept>

#include "acquisition/AcquisitionEngine.h"
#include "brdlib/BrdConfigurator.h"
#include "brdlib/DmaPort.h"
#include "camera/CameraConnector.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

AikVideoChannel::AikVideoChannel() : m_features(std::make_shared<FeatureContainer>()) {}

AikVideoChannel::~AikVideoChannel()
{
    if (const auto port = m_dmaPort.lock())   // which may outlive the engine, its observer
        port->setObserver(nullptr);
}

void FailedVideoChannel::fail() const
{
    throw std::runtime_error(m_failureText);
}

}   // namespace orvo::cognex
