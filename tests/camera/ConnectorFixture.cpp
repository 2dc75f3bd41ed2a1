#include "tests/camera/ConnectorFixture.h"

#include <cstring>

namespace orvo::test {

namespace {

constexpr int32_t kNotInApplet = -2070;

int32_t put(void* value, size_t number)
{
    const auto word = static_cast<uint32_t>(number);
    std::memcpy(value, &word, sizeof word);
    return 0;
}

}   // namespace

int32_t AppletFake::Brd_getParameterWithType(void* /*board*/, int32_t id, void* value, uint32_t dma,
                                             int32_t /*type*/)
{
    switch (id) {
    case 3050:
        return put(value, 0);
    case 3060:
        return put(value, camPorts.at(dma).size());
    case 3070:
        return put(value, camPorts.size());
    default:
        return kNotInApplet;
    }
}

int32_t AppletFake::Brd_getParameter(void* /*board*/, int32_t id, void* value, uint32_t dma)
{
    if (id != 3090)
        return kNotInApplet;
    uint32_t position = 0;
    std::memcpy(&position, value, sizeof position);
    const int32_t number = camPorts.at(dma).at(position);
    return number < 0 ? kNotInApplet : put(value, static_cast<size_t>(number));
}

std::set<uint32_t> available(const cognex::FeatureContainer& features)
{
    std::set<uint32_t> numbers;
    for (uint32_t i = 0; i < features.count(); ++i)
        if (features.featureAt(i)->available())
            numbers.insert(i);
    return numbers;
}

}   // namespace orvo::test
