/// Triggers two cameras at the same moment: a host in plain C that needs only aik.h and the names of
/// features. It opens the first two channels, which must belong to one GigE Vision board with a camera on
/// each of its ports 0 and 1. It makes both cameras wait for an action command, sends one, and fetches one
/// picture from each channel. The two pictures have the same time stamp.
/// Prints the first failure; exits with 0 if there is none.

#define AIK_LINKED
#include "aik/aik.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kCameras = 2, kWidth = 64, kHeight = 32 };

// A camera obeys a command with its device key, the key of one of its groups, and at least one bit of that
// group's mask.
#define DEVICE_KEY "17"
#define GROUP_KEY "4"
#define GROUP_MASK "1"

// Each call waits up to 7 ms for a picture. This many calls are enough to give up on it.
enum { kMostCalls = 3000 };

static char g_errstr[AIK_ERRSTR_SIZE];

/// A host may exit with open channels, so nothing is released here.
static void leave(const char* step)
{
    printf("%s: %s\n", step, g_errstr);
    exit(EXIT_FAILURE);
}

static void must(int32_t code, const char* step)
{
    if (code != AIK_OK)
        leave(step);
}

static void set(int64_t channel, const char* feature, const char* value)
{
    must(WriteValue(g_errstr, channel, feature, value), feature);
}

static void execute(int64_t channel, const char* command)
{
    must(ExecuteCommand(g_errstr, channel, command), command);
}

/// Sets a parameter of the camera, in two steps: the key names the parameter, the value feature writes it.
static void setEntry(int64_t channel, const char* parameter, const char* entry)
{
    set(channel, "CameraFeatureKey", parameter);
    set(channel, "CameraEnumerationValue", entry);
}

/// Selects the camera at a port. The camera features refer to it until another one is selected.
static void selectCamera(int64_t channel, int port)
{
    char number[16];
    snprintf(number, sizeof number, "%d", port);
    set(channel, "PortIndex", number);
}

static void prepareSelectedCamera(int64_t channel)
{
    setEntry(channel, "TriggerMode", "On");
    setEntry(channel, "TriggerSource", "Action0");

    // The device key is sent to the camera at once; group key and mask are sent by ApplyGroupRemote.
    set(channel, "EthActionCommand_DeviceKeyRemote", DEVICE_KEY);
    set(channel, "EthActionCommand_GroupIndexRemote", "0");
    set(channel, "EthActionCommand_GroupKeyRemote", GROUP_KEY);
    set(channel, "EthActionCommand_GroupMaskRemote", GROUP_MASK);
    execute(channel, "EthActionCommand_ApplyGroupRemote");

    // This feature starts the camera. The exported function of the same name starts the channel.
    execute(channel, "StartAcquisition");
}

/// Waits for the channel's next picture, fetches it, and returns its time stamp.
static uint64_t fetch(int64_t channel)
{
    static unsigned char image[kWidth * kHeight * AIK_MAX_BYTES_PER_PIXEL];
    csAIK_ImageAttributes attributes = {.size = sizeof attributes};
    uint32_t acqResult = AIK_ACQ_PENDING;
    for (int calls = 0; acqResult == AIK_ACQ_PENDING && calls < kMostCalls; ++calls)
        must(WaitForIntegration(g_errstr, channel, &acqResult), "WaitForIntegration");
    must(GetImageAttributes(g_errstr, channel, &attributes, &acqResult), "GetImageAttributes");
    must(GetImage(g_errstr, channel, image, &acqResult), "GetImage");
    if (acqResult != AIK_ACQ_COMPLETED)
        leave("no picture came");
    return attributes.timestamp;
}

int main(void)
{
    int64_t channels[kCameras];
    uint64_t timestamps[kCameras];
    char value[AIK_VALUE_SIZE];

    // Open all channels first. Each needs its geometry once before it can start.
    for (int i = 0; i < kCameras; ++i) {
        csAIK_ChannelRecord record = {.size = sizeof record};
        csAIK_CommonParams params = {.width = kWidth, .height = kHeight};
        must(GetVideoChannel(g_errstr, i, &record), "GetVideoChannel");
        channels[i] = record.channelID;
        must(SetupCommonParams(g_errstr, channels[i], &params), "SetupCommonParams");
    }
    const int64_t board = channels[0];   // the channels share the cameras of their board

    // Start the channels before the cameras, so that no picture is lost. The first call starts all channels
    // of an applet process; a further call changes nothing.
    for (int i = 0; i < kCameras; ++i)
        must(StartAcquisition(g_errstr, channels[i]), "StartAcquisition");

    execute(board, "InitializeCameraConnector");
    execute(board, "Detect");
    for (int port = 0; port < kCameras; ++port) {
        selectCamera(board, port);
        prepareSelectedCamera(board);
    }

    // One command reaches all cameras of the board. Those whose keys match obey.
    set(board, "EthActionCommand_DeviceKeyLocal", DEVICE_KEY);
    set(board, "EthActionCommand_GroupKeyLocal", GROUP_KEY);
    set(board, "EthActionCommand_GroupMaskLocal", GROUP_MASK);
    execute(board, "EthActionCommand_Send");

    for (int i = 0; i < kCameras; ++i)
        timestamps[i] = fetch(channels[i]);
    printf("one command, two pictures: %" PRIu64 ", %" PRIu64 "\n", timestamps[0], timestamps[1]);
    if (timestamps[0] != timestamps[1])
        leave("the time stamps differ");

    // Stop the cameras before the channels, and close the connector before the channels are released.
    for (int port = 0; port < kCameras; ++port) {
        selectCamera(board, port);
        execute(board, "StopAcquisition");
    }
    must(StopAcquisition(g_errstr, board), "StopAcquisition");
    execute(board, "CloseCameraConnector");
    for (int i = 0; i < kCameras; ++i) {
        must(ReadValue(g_errstr, channels[i], "FrameCountSinceLastStart", value), "FrameCountSinceLastStart");
        if (strcmp(value, "1") != 0)
            leave("more than one picture came");
    }
    for (int i = 0; i < kCameras; ++i)
        must(ReleaseVideoChannel(g_errstr, channels[i]), "ReleaseVideoChannel");
    return EXIT_SUCCESS;
}
