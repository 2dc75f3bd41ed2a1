/// A host in plain C, written against aik.h alone and linked with the import library. Opens the first channel
/// and calls each of the fifteen exports once or more: reads and writes features, connects and starts the
/// camera, fetches a picture, and closes everything again. Prints what fails.

#define AIK_LINKED
#include "aik/aik.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static char g_errstr[AIK_ERRSTR_SIZE];
static int g_failures = 0;

static void expect(int condition, const char* what)
{
    if (!condition) {
        printf("failed: %s (%s)\n", what, g_errstr);
        ++g_failures;
    }
}

/// Calls again as long as there is no picture yet.
static uint32_t waitForPicture(int64_t id)
{
    uint32_t acqResult = AIK_ACQ_PENDING;
    while (acqResult == AIK_ACQ_PENDING)
        WaitForIntegration(g_errstr, id, &acqResult);
    return acqResult;
}

int main(void)
{
    csAIK_ChannelRecord channel = {.size = sizeof channel};
    expect(GetVideoChannel(g_errstr, 0, &channel) == AIK_OK, "GetVideoChannel");
    expect(channel.failed == 0, "the channel works");
    expect(channel.getImage != NULL, "the record holds the functions");
    const int64_t id = channel.channelID;

    char name[AIK_NAME_SIZE];
    char value[AIK_VALUE_SIZE];
    char entry[AIK_ENUM_SIZE] = "";
    uint32_t type = 0;
    expect(GetFeatureName(g_errstr, id, 0, name) == AIK_OK, "GetFeatureName");
    expect(GetFeatureType(g_errstr, id, "AcquisitionStrategy", &type) == AIK_OK, "GetFeatureType");
    expect(type == AIK_TYPE_ENUMERATION, "the strategy is an enumeration");
    expect(GetFeatureAttr(g_errstr, id, "BufferCount", AIK_ATTR_WRITEABLE, value) == AIK_OK,
           "GetFeatureAttr");
    expect(strcmp(value, "True") == 0, "the buffer count can be written");
    expect(GetValidEnum(g_errstr, id, "AcquisitionStrategy", 0, entry) == AIK_OK, "GetValidEnum");
    expect(WriteValue(g_errstr, id, "AcquisitionStrategy", entry) == AIK_OK, "WriteValue");
    expect(ReadValue(g_errstr, id, "AcquisitionStrategy", value) == AIK_OK, "ReadValue");
    expect(strcmp(value, "NewestOnly") == 0, "the written value is read back");
    expect(ExecuteCommand(g_errstr, id, "NoSuchCommand") == AIK_FAILED, "ExecuteCommand of an unknown name");

    csAIK_CommonParams params = {.width = 64, .height = 32};
    expect(SetupCommonParams(g_errstr, id, &params) == AIK_OK, "SetupCommonParams");
    expect(ExecuteCommand(g_errstr, id, "InitializeCameraConnector") == AIK_OK, "the camera library opens");
    expect(ExecuteCommand(g_errstr, id, "Detect") == AIK_OK, "the cameras are found");
    expect(StartAcquisition(g_errstr, id) == AIK_OK, "StartAcquisition");
    expect(ExecuteCommand(g_errstr, id, "StartAcquisition") == AIK_OK, "the camera starts");
    expect(waitForPicture(id) == AIK_ACQ_COMPLETED, "WaitForIntegration");
    csAIK_ImageAttributes attributes = {.size = sizeof attributes};
    uint32_t acqResult = AIK_ACQ_FAILED;
    expect(GetImageAttributes(g_errstr, id, &attributes, &acqResult) == AIK_OK, "GetImageAttributes");
    expect(attributes.width == 64 && attributes.height == 32, "the picture has the size that was set");
    unsigned char* const image = malloc((size_t)64 * 32 * AIK_MAX_BYTES_PER_PIXEL);
    expect(GetImage(g_errstr, id, image, &acqResult) == AIK_OK, "GetImage");
    expect(acqResult == AIK_ACQ_COMPLETED, "the picture was copied");
    free(image);

    expect(ExecuteCommand(g_errstr, id, "StopAcquisition") == AIK_OK, "the camera stops");
    expect(StopAcquisition(g_errstr, id) == AIK_OK, "StopAcquisition");
    expect(ExecuteCommand(g_errstr, id, "CloseCameraConnector") == AIK_OK, "the camera library closes");
    expect(ReleaseVideoChannel(g_errstr, id) == AIK_OK, "ReleaseVideoChannel");
    return g_failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
