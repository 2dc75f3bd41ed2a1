#pragma once

#include <string>

#include "aik/aik.h"
#include "os/Os.h"

namespace orvo::test {

/// The built adapter, loaded as a host loads it. Never unloaded: its boards may still run.
class Adapter {
public:
    /// The one beside this program.
    Adapter();
    explicit Adapter(const std::string& path);

    /// Where the libraries of this build lie, with a separator at the end.
    static std::string folder();

    AIK_GetVideoChannel getVideoChannel;
    AIK_SetupCommonParams setupCommonParams;
    AIK_ReleaseVideoChannel releaseVideoChannel;
    AIK_GetImage getImage;
    AIK_WaitForIntegration waitForIntegration;
    AIK_GetImageAttributes getImageAttributes;
    AIK_StartAcquisition startAcquisition;
    AIK_StopAcquisition stopAcquisition;
    AIK_ExecuteCommand executeCommand;
    AIK_ReadValue readValue;
    AIK_WriteValue writeValue;
    AIK_GetFeatureName getFeatureName;
    AIK_GetFeatureType getFeatureType;
    AIK_GetFeatureAttr getFeatureAttr;
    AIK_GetValidEnum getValidEnum;
};

}   // namespace orvo::test
