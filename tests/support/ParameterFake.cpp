#include "tests/support/ParameterFake.h"

namespace orvo::test {

namespace {

template <typename T>
std::string numberAt(const void* value)
{
    T number{};
    std::memcpy(&number, value, sizeof number);
    return std::to_string(number);
}

std::string typedText(const void* value, int32_t type)
{
    switch (type) {
    case 1:
        return numberAt<int32_t>(value);
    case 2:
        return numberAt<uint32_t>(value);
    case 3:
        return numberAt<int64_t>(value);
    case 4:
        return numberAt<uint64_t>(value);
    default:
        return numberAt<double>(value);
    }
}

}   // namespace

const char* ParameterFake::Brd_getLastErrorDescription(void* /*board*/)
{
    return description;
}

int32_t ParameterFake::Brd_getParameterIdByName(void* /*board*/, const char* name)
{
    journal.push_back("id of '" + std::string(name) + "'");
    return idAnswer;
}

int32_t ParameterFake::Brd_getParameterProperty(void* /*board*/, int32_t /*id*/, int32_t property,
                                                void* buffer, int32_t* length)
{
    journal.push_back("property " + std::to_string(property));
    return deliver(property, buffer, length);
}

int32_t ParameterFake::Brd_getParameterPropertyEx(void* /*board*/, int32_t /*id*/, int32_t property,
                                                  uint32_t dma, void* buffer, int32_t* length)
{
    journal.push_back("property " + std::to_string(property) + " of dma " + std::to_string(dma));
    return deliver(property, buffer, length);
}

int32_t ParameterFake::Brd_setParameter(void* /*board*/, int32_t id, const void* value, uint32_t dma)
{
    const std::string text = holdsText ? static_cast<const char*>(value) : numberAt<int32_t>(value);
    journal.push_back("set " + std::to_string(id) + " of dma " + std::to_string(dma) + ": " + text);
    return writeAnswer;
}

int32_t ParameterFake::Brd_setParameterWithType(void* /*board*/, int32_t id, const void* value, uint32_t dma,
                                                int32_t type)
{
    journal.push_back("set " + std::to_string(id) + " of dma " + std::to_string(dma) + ", type " +
                      std::to_string(type) + ": " + typedText(value, type));
    return writeAnswer;
}

int32_t ParameterFake::deliver(int32_t property, void* buffer, int32_t* length)
{
    constexpr int32_t kDoesNotFit = -3;
    if (const auto refusal = refused.find(property); refusal != refused.end())
        return refusal->second;
    const std::string& bytes = properties[property];
    const auto size = static_cast<int32_t>(bytes.size());
    if (buffer && *length < size)
        return kDoesNotFit;
    if (buffer)
        std::memcpy(buffer, bytes.data(), bytes.size());
    *length = size;
    return 0;
}

}   // namespace orvo::test
