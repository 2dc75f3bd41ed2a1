#include "tests/camera/CameraLibrariesFake.h"

#include <cstring>
#include <sstream>

#include "camera/eth/EthLibrary.h"
#include "camera/ogc/OgcLibrary.h"

namespace orvo::test {

namespace {

CameraLibrariesFake* g_fake = nullptr;

constexpr uint64_t kLibrary = 1;

template <typename... Arguments>
int32_t called(const char* name, const Arguments&... arguments)
{
    std::ostringstream text;
    ((text << ' ' << arguments), ...);
    return g_fake->called(name, text.str());
}

template <typename T>
int32_t get(int32_t status, T* out, T value)
{
    if (status == 0)
        *out = value;
    return status;
}

int32_t getCamera(int32_t status, uint64_t* camera)
{
    if (status == 0)
        *camera = g_fake->newCamera();
    return status;
}

int32_t getText(int32_t status, char** text)
{
    if (status != 0)
        return status;
    if (*text && g_fake->textIntoBuffer)
        std::strcpy(*text, g_fake->text);
    else
        *text = const_cast<char*>(g_fake->text);
    return 0;
}

}   // namespace

CameraLibrariesFake::CameraLibrariesFake()
{
    g_fake = this;
}

CameraLibrariesFake::~CameraLibrariesFake()
{
    g_fake = nullptr;
}

int32_t CameraLibrariesFake::called(const std::string& name, const std::string& arguments)
{
    journal.push_back(name + arguments);
    for (const std::string& key : {journal.back(), name})
        if (const auto answer = answers.find(key); answer != answers.end())
            return answer->second;
    return 0;
}

}   // namespace orvo::test

namespace orvo::cognex {

using test::called;
using test::g_fake;
using test::get;
using test::getCamera;
using test::getText;
using test::kLibrary;

extern "C" {

#define ORVO_PARAMETERS(Family)                                                                              \
    int32_t Family##_setIntegerValue(uint64_t camera, const char* name, int64_t value)                       \
    {                                                                                                        \
        return called("setInteger", camera, name, value);                                                    \
    }                                                                                                        \
    int32_t Family##_getIntegerValue(uint64_t camera, const char* name, int64_t* value)                      \
    {                                                                                                        \
        return get(called("getInteger", camera, name), value, g_fake->integer);                              \
    }                                                                                                        \
    int32_t Family##_setBooleanValue(uint64_t camera, const char* name, int32_t value)                       \
    {                                                                                                        \
        return called("setBoolean", camera, name, value);                                                    \
    }                                                                                                        \
    int32_t Family##_getBooleanValue(uint64_t camera, const char* name, int32_t* value)                      \
    {                                                                                                        \
        return get(called("getBoolean", camera, name), value, g_fake->boolean);                              \
    }                                                                                                        \
    int32_t Family##_setFloatValue(uint64_t camera, const char* name, double value)                          \
    {                                                                                                        \
        return called("setFloat", camera, name, value);                                                      \
    }                                                                                                        \
    int32_t Family##_getFloatValue(uint64_t camera, const char* name, double* value)                         \
    {                                                                                                        \
        return get(called("getFloat", camera, name), value, g_fake->floatingPoint);                          \
    }                                                                                                        \
    int32_t Family##_setStringValue(uint64_t camera, const char* name, const char* text)                     \
    {                                                                                                        \
        return called("setString", camera, name, text);                                                      \
    }                                                                                                        \
    int32_t Family##_getStringValue(uint64_t camera, const char* name, char** text)                          \
    {                                                                                                        \
        return getText(called("getString", camera, name), text);                                             \
    }                                                                                                        \
    int32_t Family##_setEnumerationValue(uint64_t camera, const char* name, const char* text)                \
    {                                                                                                        \
        return called("setEnumeration", camera, name, text);                                                 \
    }                                                                                                        \
    int32_t Family##_getEnumerationValue(uint64_t camera, const char* name, char** text)                     \
    {                                                                                                        \
        return getText(called("getEnumeration", camera, name), text);                                        \
    }                                                                                                        \
    int32_t Family##_executeCommand(uint64_t camera, const char* name)                                       \
    {                                                                                                        \
        return called("execute", camera, name);                                                              \
    }                                                                                                        \
    int32_t Family##_closeBoard(uint64_t library)                                                            \
    {                                                                                                        \
        return called("close", library);                                                                     \
    }                                                                                                        \
    const void* Family##_getCameraInfo(uint64_t camera)                                                      \
    {                                                                                                        \
        called("info", camera);                                                                              \
        return g_fake->record;                                                                               \
    }                                                                                                        \
    int32_t Family##_connectCamera(uint64_t camera)                                                          \
    {                                                                                                        \
        return called("connect", camera);                                                                    \
    }

ORVO_PARAMETERS(Eth)
ORVO_PARAMETERS(Ogc)

int32_t Eth_openBoard(int32_t boardIndex, int32_t zero, uint64_t* library)
{
    return get(called("open", boardIndex, zero), library, kLibrary);
}

int32_t Eth_scanPorts(uint64_t library, uint32_t mask, uint32_t bound)
{
    return called("scan", library, mask, bound);
}

int32_t Eth_getCameraCount(uint64_t library, uint32_t port)
{
    return called("count", library, port);
}

int32_t Eth_releaseCamera(uint64_t camera)
{
    return called("release", camera);
}

int32_t Eth_disconnectCamera(uint64_t camera)
{
    return called("disconnect", camera);
}

int32_t Eth_startAcquisition(uint64_t camera)
{
    return called("start", camera);
}

int32_t Eth_stopAcquisition(uint64_t camera)
{
    return called("stop", camera);
}

const char* Eth_getErrorDescription(int32_t code)
{
    called("describe", code);
    return g_fake->description;
}

int32_t Eth_setCameraRegister(uint64_t camera, const char* name, const uint32_t* value, uint32_t one)
{
    return called("register", camera, name, *value, one);
}

int32_t Eth_getCameraByIndex(uint64_t library, uint32_t port, uint32_t index, uint64_t* camera)
{
    return getCamera(called("camera", library, port, index), camera);
}

int32_t Eth_sendActionCommand(uint64_t library, uint32_t port, uint32_t all, uint32_t deviceKey,
                              uint32_t groupKey, uint32_t groupMask)
{
    return called("send", library, port, all, deviceKey, groupKey, groupMask);
}

int32_t Ogc_openBoard(uint64_t applet, int32_t zero, uint64_t* library)
{
    return get(called("open", applet, zero), library, kLibrary);
}

int32_t Ogc_scanPorts(uint64_t library, uint32_t mask, uint32_t bound, uint32_t zero)
{
    return called("scan", library, mask, bound, zero);
}

int32_t Ogc_getFoundCount(uint64_t library)
{
    return called("found", library);
}

int32_t Ogc_getCameraOnPort(uint64_t library, uint32_t port, uint64_t* camera)
{
    return getCamera(called("camera", library, port), camera);
}

}   // extern "C"

}   // namespace orvo::cognex
