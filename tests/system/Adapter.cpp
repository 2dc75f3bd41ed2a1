#include "tests/system/Adapter.h"

#include <stdexcept>

namespace orvo::test {

namespace {

template <typename Function>
void find(Function& function, os::Module module, const char* name)
{
    function = reinterpret_cast<Function>(os::findSymbol(module, name));
    if (!function)
        throw std::runtime_error(std::string("The adapter lacks ") + name);
}

void here() {}

}   // namespace

Adapter::Adapter() : Adapter(folder() + "OrvoCognexAdapter" + os::kLibraryEnding) {}

Adapter::Adapter(const std::string& path)
{
    os::Error error;
    os::Module module = os::loadLibrary(path, os::Neighbours::BesideTheLibrary, &error);
    if (!module)
        throw std::runtime_error("Cannot load " + path + ": " + error.text);
    find(getVideoChannel, module, "GetVideoChannel");
    find(setupCommonParams, module, "SetupCommonParams");
    find(releaseVideoChannel, module, "ReleaseVideoChannel");
    find(getImage, module, "GetImage");
    find(waitForIntegration, module, "WaitForIntegration");
    find(getImageAttributes, module, "GetImageAttributes");
    find(startAcquisition, module, "StartAcquisition");
    find(stopAcquisition, module, "StopAcquisition");
    find(executeCommand, module, "ExecuteCommand");
    find(readValue, module, "ReadValue");
    find(writeValue, module, "WriteValue");
    find(getFeatureName, module, "GetFeatureName");
    find(getFeatureType, module, "GetFeatureType");
    find(getFeatureAttr, module, "GetFeatureAttr");
    find(getValidEnum, module, "GetValidEnum");
}

std::string Adapter::folder()
{
    const std::string program = os::modulePath(reinterpret_cast<const void*>(&here));
    return program.substr(0, program.rfind(os::kSeparator) + 1);
}

}   // namespace orvo::test
