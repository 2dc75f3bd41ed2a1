#include "features/BrdFeature.h"

#include <stdexcept>

#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

void BrdFeature::check(int32_t status) const
{
    if (status == 0)
        return;
    const char* const description = Brd_getLastErrorDescription(m_boardHandle);
    throw std::runtime_error(description ? description : "");
}

void BrdFeature::setParameter(const void* value) const
{
    check(Brd_setParameter(m_boardHandle, m_parameterId, value, static_cast<uint32_t>(m_dmaIndex)));
}

}   // namespace orvo::cognex
