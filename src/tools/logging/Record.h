#pragma once

#include <cstdint>
#include <exception>
#include <locale>
#include <sstream>

#include "os/Os.h"
#include "tools/logging/Logger.h"

namespace orvo::tools::logging {

/// Where a trace record says that it comes from: a source path below src/ without its ending, and a line.
struct SourceLine {
    const char* path;
    uint32_t line;
};

/// Builds a record and writes it, only if `level` is on for the calling thread. `streamText` streams the
/// whole text. A record that can't be built is dropped: it must not fail the call that it tells of.
template <typename StreamText>
void writeRecord(Logger* logger, int32_t level, StreamText&& streamText) noexcept
try {
    if (!logger || !logger->isEnabled(level))
        return;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    streamText(text);
    logger->write(level, text.str().c_str(), 0, 0);
} catch (const std::exception&) {
}

/// A step of a call, on level 1.
template <typename StreamMessage>
void recordTrace(Logger* logger, const SourceLine& source, StreamMessage&& streamMessage) noexcept
{
    writeRecord(logger, kTrace, [&](std::ostream& text) {
        text << "source-file=" << source.path << ",source-line=" << source.line
             << ",thread-id=" << os::currentThreadId() << "|";
        streamMessage(text);
    });
}

/// A failure that goes no further, on level 4 or 5.
template <typename StreamMessage>
void recordFailure(Logger* logger, int32_t level, StreamMessage&& streamMessage) noexcept
{
    writeRecord(logger, level, [&](std::ostream& text) {
        text << "thread-id=" << os::currentThreadId() << "|";
        streamMessage(text);
    });
}

}   // namespace orvo::tools::logging
