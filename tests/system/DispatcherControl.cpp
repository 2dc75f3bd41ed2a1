#include "tests/system/DispatcherControl.h"

#include <regex>

namespace orvo::test {

namespace {

constexpr const char* kLoggers[] = {
    "orvo.Cognex.Interface",         "orvo.Cognex.BoardContainer",  "orvo.Cognex.Feature",
    "orvo.Cognex.FeatureContainer",  "orvo.Cognex.AppletLoader",    "orvo.Cognex.DmaPort",
    "orvo.Cognex.AcquisitionEngine", "orvo.Cognex.CameraConnector",
};
constexpr int32_t kTrace = 1;

std::string withoutThreadsAndLines(const std::string& text)
{
    static const std::regex threadId("thread-id=[0-9]+");
    static const std::regex freeLine("(source-file=(?!brdlib/DmaPort)[^,]*,source-line=)[0-9]+");
    return std::regex_replace(std::regex_replace(text, threadId, "thread-id=T"), freeLine, "$1N");
}

}   // namespace

DispatcherControl::DispatcherControl()
{
    for (const char* logger : kLoggers)
        OrvoSimLog_setLevel(logger, kTrace);
    OrvoSimLog_clear();
    OrvoSimLog_capture(1);
}

DispatcherControl::~DispatcherControl()
{
    OrvoSimLog_capture(0);
    OrvoSimLog_clear();
}

Lines DispatcherControl::take()
{
    Lines records;
    OrvoSimLog_Record record{};
    for (uint64_t i = 0; OrvoSimLog_read(i, &record) == 1; ++i)
        records.push_back(std::to_string(record.level) + " " + record.logger + " " +
                          withoutThreadsAndLines(record.text));
    OrvoSimLog_clear();
    return records;
}

}   // namespace orvo::test
