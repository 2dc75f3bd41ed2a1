#include "features/BrdStringFeature.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

namespace {

constexpr const char* kBrdStringSource = "features/BrdStringFeature";

}   // namespace

void BrdStringFeature::doRead(char* val)
{
    const auto read = [this](char* buffer, int32_t* length) {
        const int32_t status = Brd_getParameterProperty(
            boardHandle(), parameterId(), static_cast<int32_t>(BrdProperty::Value), buffer, length);
        if (status != 0)
            Brd_getLastErrorDescription(boardHandle());   // dropped: a refused read does not fail
    };
    int32_t length = 0;
    read(nullptr, &length);
    length = std::max(length, 0);
    std::string text(static_cast<size_t>(length), '\0');
    read(text.data(), &length);
    text.copy(val, text.size());
}

void BrdStringFeature::doWrite(const char* val)
{
    traceStep(kBrdStringSource, "Write string start");
    setParameter(val);
    traceStep(kBrdStringSource, "Write string end");
}

void BrdStringFeature::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for string feature.");
}

}   // namespace orvo::cognex
