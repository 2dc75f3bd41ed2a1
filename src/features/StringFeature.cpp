#include "features/StringFeature.h"

#include <stdexcept>

#include "features/HostText.h"

namespace orvo::cognex {

void StringFeature::doRead(char* val)
{
    copyBounded(val, m_value);
}

void StringFeature::doWrite(const char* val)
{
    m_value = val;
}

void StringFeature::doExecute()
{
    // The boolean's words, and meant so: hosts know them.
    throw std::runtime_error("Execute function is not implemented for bool feature.");
}

}   // namespace orvo::cognex
