#include "features/AdapterFeature.h"

#include <cstring>
#include <ostream>

#include "AIKException.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

namespace {

void requireBuffer(const char* val)
{
    if (!val)
        throw AIKException("Val is an invalid pointer");
}

void requireAvailable(bool available)
{
    if (!available)
        throw AIKException("Feature is not available.");
}

}   // namespace

void AdapterFeature::read(char* val)
{
    requireBuffer(val);
    if (!m_readable)
        throw AIKException("Feature is not readable.");
    requireAvailable(m_available);
    doRead(val);
}

void AdapterFeature::write(const char* val)
{
    requireBuffer(val);
    if (!m_writeable)
        throw AIKException("Feature is not writeable.");
    requireAvailable(m_available);
    doWrite(val);
    notifyObservers();
}

void AdapterFeature::execute()
{
    requireAvailable(m_available);
    doExecute();
}

std::string AdapterFeature::validEnum(int32_t /*index*/)
{
    throw AIKException("Feature is not a valid enum type.");
}

void AdapterFeature::notifyObservers()
{
    // By index: an observer may add another one. NOLINTNEXTLINE(modernize-loop-convert)
    for (size_t i = 0; i < m_observers.size(); ++i)
        m_observers[i]->featureChanged(this);
}

void AdapterFeature::traceStep(const char* sourcePath, const char* step, const std::source_location& place)
{
    tools::logging::recordTrace(logger(), {sourcePath, place.line()},
                                [&](std::ostream& text) { text << step; });
}

void copyWhole(char* destination, const std::string& text)
{
    std::memcpy(destination, text.c_str(), text.size() + 1);
}

void copyBounded(char* destination, std::string_view text)
{
    destination[text.copy(destination, kHostTextSize - 1)] = '\0';
}

}   // namespace orvo::cognex
