#include "features/NumberText.h"

#include <stdexcept>

namespace orvo::cognex {

std::string toText(uint64_t number)
{
    return std::to_string(number);
}

std::string toText(int64_t number)
{
    return std::to_string(number);
}

template <typename T>
T parseOrThrow(const char* text)
{
    const std::optional<T> number = parseNumber<T>(text);
    if (!number)
        throw std::runtime_error("Cannot parse char array to number value");
    return *number;
}

template int32_t parseOrThrow<int32_t>(const char*);
template uint32_t parseOrThrow<uint32_t>(const char*);
template int64_t parseOrThrow<int64_t>(const char*);
template uint64_t parseOrThrow<uint64_t>(const char*);
template double parseOrThrow<double>(const char*);

int32_t parseInt(const char* text)
{
    return parseOrThrow<int32_t>(text);
}

}   // namespace orvo::cognex
