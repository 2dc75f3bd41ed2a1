/// A host that returns from main() while its channel is open, its camera started and pictures flow. Its exit
/// code must be its own.

#define AIK_LINKED
#include "aik/aik.h"

#include <stdio.h>

enum { kOwnExitCode = 42, kCannotRun = 1, kPictures = 20 };

int main(void)
{
    char errstr[AIK_ERRSTR_SIZE] = "";
    csAIK_ChannelRecord channel = {.size = sizeof channel};
    csAIK_CommonParams params = {.width = 64, .height = 32};
    if (GetVideoChannel(errstr, 0, &channel) != AIK_OK ||
        SetupCommonParams(errstr, channel.channelID, &params) != AIK_OK ||
        ExecuteCommand(errstr, channel.channelID, "InitializeCameraConnector") != AIK_OK ||
        ExecuteCommand(errstr, channel.channelID, "Detect") != AIK_OK ||
        StartAcquisition(errstr, channel.channelID) != AIK_OK ||
        ExecuteCommand(errstr, channel.channelID, "StartAcquisition") != AIK_OK) {
        printf("%s\n", errstr);
        return kCannotRun;
    }
    static unsigned char image[64 * 32 * AIK_MAX_BYTES_PER_PIXEL];
    for (int fetched = 0; fetched < kPictures;) {
        uint32_t acqResult = 0;
        if (GetImage(errstr, channel.channelID, image, &acqResult) != AIK_OK) {
            printf("%s\n", errstr);
            return kCannotRun;
        }
        fetched += acqResult == AIK_ACQ_COMPLETED;
    }
    return kOwnExitCode;
}
