#include "channels/VideoChannel.h"

#include <stdexcept>

#include "acquisition/AcquisitionEngine.h"
#include "brdlib/BrdConfigurator.h"
#include "camera/CameraConnector.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

AikVideoChannel::AikVideoChannel() : m_features(std::make_shared<FeatureContainer>()) {}

AikVideoChannel::~AikVideoChannel() = default;

void FailedVideoChannel::fail() const
{
    throw std::runtime_error(m_failureText);
}

}   // namespace orvo::cognex
