#pragma once

#include <array>
#include <string>

#include "aik/aik.h"
#include "aikctl/AdapterFailure.h"
#include "os/Os.h"

namespace orvo::aikctl {

/// The functions of the adapter that the commands use, found by name.
struct Exports {
    AIK_GetVideoChannel getVideoChannel;
    AIK_SetupCommonParams setupCommonParams;
    AIK_ReleaseVideoChannel releaseVideoChannel;
    AIK_GetImage getImage;
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

/// Throws runtime_error with the first name that `library`, loaded from `path`, doesn't export.
Exports findExports(os::Module library, const std::string& path);

/// Calls an export; the text buffer, its first argument, is ours. Throws AdapterFailure.
template <typename Function, typename... Arguments>
void call(Function function, Arguments... arguments)
{
    std::array<char, AIK_ERRSTR_SIZE> text{};
    if (function(text.data(), arguments...) != AIK_OK)
        throw AdapterFailure(text.data());
}

}   // namespace orvo::aikctl
