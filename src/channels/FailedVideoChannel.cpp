#include "channels/FailedVideoChannel.h"

#include <stdexcept>

namespace orvo::cognex {

void FailedVideoChannel::fail() const
{
    throw std::runtime_error(m_failureText);
}

}   // namespace orvo::cognex
