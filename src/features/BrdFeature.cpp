#include "features/BrdFeature.h"

#include <stdexcept>

#include "brdlib/binding/BrdFunctions.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

constexpr size_t kTextSize = 255;

}   // namespace

BrdPropertyText brdProperty(void* boardHandle, int32_t parameterId, BrdProperty property, size_t size)
{
    std::string text(size, '\0');
    auto length = static_cast<int32_t>(size);
    const int32_t status = Brd_getParameterProperty(boardHandle, parameterId, static_cast<int32_t>(property),
                                                    text.data(), &length);
    // Up to the first NUL: what the length word counts differs from property to property.
    return {.status = status, .text = text.substr(0, text.find('\0'))};
}

bool isEnumeration(void* boardHandle, int32_t parameterId)
{
    const auto [status, size] =
        brdProperty(boardHandle, parameterId, BrdProperty::EnumerationSize, kTextSize);
    return status == 0 && parseInt(size.c_str()) > 0;
}

std::string parameterText(void* boardHandle, int32_t parameterId)
{
    const auto [status, text] = brdProperty(boardHandle, parameterId, BrdProperty::Text, kTextSize);
    checkBrd(status);
    return text;
}

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
