/// The shortest host: opens the first channel, prints its name or the failure, and releases it.

#define AIK_LINKED
#include "aik/aik.h"

#include <stdio.h>

int main(void)
{
    char errstr[AIK_ERRSTR_SIZE] = "";
    csAIK_ChannelRecord channel = {.size = sizeof channel};
    const int32_t code = GetVideoChannel(errstr, 0, &channel);
    printf("%s\n", code == AIK_OK ? channel.name : errstr);
    ReleaseVideoChannel(errstr, channel.channelID);
    return code;
}
