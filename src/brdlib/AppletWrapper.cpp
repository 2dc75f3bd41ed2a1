#include "brdlib/AppletWrapper.h"

#include "AIKException.h"
#include "brdlib/AppletProcess.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

namespace {

constexpr int32_t kParameterProcessCount = 3070;
constexpr uint32_t kUnanswered = 0xFFFFFFFF;

}   // namespace

AppletWrapper::AppletWrapper(void* handle) : m_handle(handle)
{
    const uint32_t count = processCount();
    for (uint32_t i = 0; i < count; ++i) {
        try {
            auto process = AppletProcess::create(i, handle);
            process->createDmaPorts();
            m_processes.push_back(std::move(process));
        } catch (...) {   // one process less is no reason to lose the others
        }
    }
}

AppletWrapper::~AppletWrapper()
{
    for (auto& process : m_processes)
        process.reset();   // in their order, which the vector alone doesn't promise
}

void AppletWrapper::FreeGrabber::operator()(void* handle) const
{
    Brd_FreeGrabber(handle);
}

uint32_t AppletWrapper::processCount() const
{
    uint32_t count = kUnanswered;
    const int32_t status =
        Brd_getParameterWithType(handle(), kParameterProcessCount, &count, 0, kTypeOfCounts);
    if (status == kParameterNotInApplet)
        return 1;
    if (status != 0 || count == kUnanswered)
        throwBrdError(status);
    return plausibleCount(count);
}

std::shared_ptr<AppletWrapper> locked(const std::weak_ptr<AppletWrapper>& applet)
{
    return lockedOrThrow(applet, "No applet is loaded!");
}

}   // namespace orvo::cognex
