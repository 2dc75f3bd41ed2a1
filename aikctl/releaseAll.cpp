#include "aikctl/releaseAll.h"

#include "aikctl/Console.h"

namespace orvo::aikctl {

void releaseAll(std::vector<Channel>& channels, Console& console)
{
    for (Channel& channel : channels) {
        try {
            channel.release();
        } catch (const AdapterFailure& failure) {
            console.fail("channel " + std::to_string(channel.index()) + ": " + failure.what());
        }
    }
}

}   // namespace orvo::aikctl
