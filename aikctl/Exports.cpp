#include "aikctl/Exports.h"

#include <type_traits>

namespace orvo::aikctl {

Exports findExports(os::Module library, const std::string& path)
{
    Exports exports{};
    const auto find = [&](const char* name, auto& function) {
        function =
            reinterpret_cast<std::remove_reference_t<decltype(function)>>(os::findSymbol(library, name));
        if (!function)
            throw std::runtime_error(path + " is no adapter: it doesn't export " + name);
    };
    find("GetVideoChannel", exports.getVideoChannel);
    find("SetupCommonParams", exports.setupCommonParams);
    find("ReleaseVideoChannel", exports.releaseVideoChannel);
    find("GetImage", exports.getImage);
    find("GetImageAttributes", exports.getImageAttributes);
    find("StartAcquisition", exports.startAcquisition);
    find("StopAcquisition", exports.stopAcquisition);
    find("ExecuteCommand", exports.executeCommand);
    find("ReadValue", exports.readValue);
    find("WriteValue", exports.writeValue);
    find("GetFeatureName", exports.getFeatureName);
    find("GetFeatureType", exports.getFeatureType);
    find("GetFeatureAttr", exports.getFeatureAttr);
    find("GetValidEnum", exports.getValidEnum);
    return exports;
}

}   // namespace orvo::aikctl
