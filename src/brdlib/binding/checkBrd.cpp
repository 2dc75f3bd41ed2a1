#include "brdlib/binding/checkBrd.h"

#include <string>

#include "AIKException.h"

namespace orvo::cognex {

void throwBrdError(int64_t number)
{
    throw AIKException("brd error code: " + std::to_string(number));
}

}   // namespace orvo::cognex
