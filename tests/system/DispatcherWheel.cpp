#include "tests/system/DispatcherControl.h"

#include <regex>
#include <stdexcept>

#include "os/Os.h"
#include "tests/system/Adapter.h"

namespace orvo::test {

namespace {

constexpr const char* kLoggers[] = {
    "orvo.Cognex.Interface",         "orvo.Cognex.BoardContainer",  "orvo.Cognex.Feature",
    "orvo.Cognex.FeatureContainer",  "orvo.Cognex.AppletLoader",    "orvo.Cognex.DmaPort",
    "orvo.Cognex.AcquisitionEngine", "orvo.Cognex.CameraConnector",
};
constexpr int32_t kTrace = 1;

template <typename Function>
void find(Function& function, os::Module module, const char* name)
{
    function = reinterpret_cast<Function>(os::findSymbol(module, name));
    if (!function)
        throw std::runtime_error(std::string("The dispatcher lacks ") + name);
}

std::string withoutAccidents(const std::string& text)
{
    static const std::regex threadId("thread-id=[0-9]+");
    static const std::regex freeLine("(source-file=(?!brdlib/DmaPort)[^,]*,source-line=)[0-9]+");
    return std::regex_replace(std::regex_replace(text, threadId, "thread-id=T"), freeLine, "$1N");
}

}   // namespace

DispatcherWheel::DispatcherWheel()
{
    const std::string path = Adapter::folder() + "common-logging-dispatcher" + os::kLibraryEnding;
    os::Module module = os::loadLibrary(path, os::Neighbours::BesideTheLibrary);
    if (!module)
        throw std::runtime_error("Cannot load " + path);
    find(m_setLevel, module, "OrvoSimLog_setLevel");
    find(m_goAway, module, "OrvoSimLog_goAway");
    find(m_capture, module, "OrvoSimLog_capture");
    find(m_read, module, "OrvoSimLog_read");
    find(m_clear, module, "OrvoSimLog_clear");
    for (const char* logger : kLoggers)
        m_setLevel(logger, kTrace);
    m_clear();
    m_capture(1);
}

DispatcherWheel::~DispatcherWheel()
{
    m_capture(0);
    m_clear();
}

std::vector<std::string> DispatcherWheel::take()
{
    std::vector<std::string> records;
    OrvoSimLog_Record record{};
    for (uint64_t i = 0; m_read(i, &record) == 1; ++i)
        records.push_back(std::to_string(record.level) + " " + record.logger + " " +
                          withoutAccidents(record.text));
    m_clear();
    return records;
}

}   // namespace orvo::test
