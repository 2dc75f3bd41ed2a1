#include "features/NumberFeature.h"

#include <stdexcept>

#include "AIKException.h"
#include "features/HostText.h"
#include "features/NumberText.h"

namespace orvo::cognex {

template <typename T>
void NumberFeature<T>::doRead(char* val)
{
    copyWhole(val, formatNumber(value()));
}

template <typename T>
void NumberFeature<T>::doWrite(const char* val)
{
    const std::optional<T> number = parseNumber<T>(val);
    if (!number)
        throw AIKException("Cannot parse char array to a number value");
    setValue(*number);
}

template <typename T>
void NumberFeature<T>::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for int feature.");
}

template class NumberFeature<int>;
template class NumberFeature<unsigned int>;
template class NumberFeature<unsigned long long>;

}   // namespace orvo::cognex
