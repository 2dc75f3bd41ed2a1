#include "aikctl/connectCameras.h"

#include "aikctl/AdapterFailure.h"
#include "aikctl/BoardCameras.h"
#include "aikctl/Console.h"

namespace orvo::aikctl {

void connectCameras(BoardCameras& cameras, Console& console)
{
    try {
        cameras.connect();
        if (cameras.ports().empty())
            console.note("no camera was found");
    } catch (const AdapterFailure& failure) {
        if (cameras.ports().empty())
            throw;
        console.fail(failure.what());
    }
}

}   // namespace orvo::aikctl
