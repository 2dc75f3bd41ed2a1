#pragma once

#include <cstdint>
#include <exception>
#include <ostream>
#include <source_location>

#include "AIKException.h"
#include "aik/aik.h"
#include "features/AdapterFeature.h"
#include "tools/logging/Logging.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

/// The logger of the exports, and the process's use of the support library: while it exists, there is logging.
/// Threads: created and destroyed by calls that the host serialises; logger() on any thread in between.
class LogWrap {
public:
    LogWrap();
    LogWrap(const LogWrap&) = delete;
    LogWrap& operator=(const LogWrap&) = delete;
    virtual ~LogWrap();

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

    /// The one instance, or null.
    static LogWrap* instance();
    /// Creates the instance if there is none and there is memory for it.
    static void createInstance() noexcept;
    /// Destroys the instance, and all loggers with it.
    static void destroyInstance();

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.Interface"};
};

/// The arguments that all exports have in common.
struct Call {
    const char* name;
    char* errstr;
    uint32_t* acqResult = nullptr;   // of the image functions alone
};

inline void require(const void* pointer, const char* text)
{
    if (!pointer)
        throw AIKException(text);
}

inline void storeAcqResult(const Call& call, uint32_t result)
{
    if (call.acqResult)
        *call.acqResult = result;
}

/// The frame of every export: enter and leave records around the body, failures turned into a return code, an
/// acquisition status and a text. The body does the checks after that of `errstr`, and the one dispatch.
template <typename Body>
int32_t callFrame(const Call& call, Body&& body,
                  const std::source_location& place = std::source_location::current())
{
    using namespace tools::logging;
    const auto trace = [&](const auto& streamMessage) {
        if (LogWrap* const log = LogWrap::instance())
            recordTrace(log->logger(), {"OrvoCognexAdapter", place.line()}, streamMessage);
    };
    const auto traceCaught = [&](const char* verb, const std::exception& caught) {
        if (LogWrap* const log = LogWrap::instance())
            recordFailure(log->logger(), kCaught,
                          [&](std::ostream& text) { text << call.name << verb << caught.what(); });
    };

    int32_t code = AIK_OK;
    trace([&](std::ostream& text) { text << "Enter " << call.name; });
    try {
        require(call.errstr, "errstr is an invalid pointer.");
        body();
    } catch (const Pending& pending) {   // first, because to wait is no failure
        storeAcqResult(call, AIK_ACQ_PENDING);
        traceCaught(" panding: ", pending);
    } catch (const std::exception& failure) {   // and nothing wider: any other is not ours to hide
        storeAcqResult(call, AIK_ACQ_FAILED);
        if (call.errstr)
            copyBounded(call.errstr, failure.what());
        traceCaught(" exception: ", failure);
        code = AIK_FAILED;
    }
    trace([&](std::ostream& text) { text << "Leave " << call.name << ": " << code; });
    return code;
}

}   // namespace orvo::cognex
