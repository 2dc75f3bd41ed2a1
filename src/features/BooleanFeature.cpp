#include "features/BooleanFeature.h"

#include <stdexcept>
#include <string_view>

#include "features/HostText.h"

namespace orvo::cognex {

void BooleanFeature::doRead(char* val)
{
    copyBounded(val, flagText(m_value));
}

void BooleanFeature::doWrite(const char* val)
{
    m_value = std::string_view(val) == "True";
}

void BooleanFeature::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for bool feature.");
}

}   // namespace orvo::cognex
