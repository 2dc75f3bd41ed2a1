#include "channels/AikVideoChannel.h"

#include "acquisition/AcquisitionEngine.h"
#include "brdlib/BrdConfigurator.h"
#include "camera/CameraConnector.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

AikVideoChannel::AikVideoChannel() : m_features(std::make_shared<FeatureContainer>()) {}

AikVideoChannel::~AikVideoChannel() = default;

}   // namespace orvo::cognex
