#pragma once

#include <exception>

#include "sim/core/Camera.h"

namespace orvo::sim {

/// A call that fails, and what it answers.
class CameraError : public std::exception {
public:
    explicit CameraError(CameraStatus status) : m_status(status) {}
    CameraStatus status() const { return m_status; }
    const char* what() const noexcept override { return "a call to a camera library fails"; }

private:
    CameraStatus m_status;
};

/// Throws CameraError unless the status is Ok.
inline void require(CameraStatus status)
{
    if (status != CameraStatus::Ok)
        throw CameraError(status);
}

/// Throws CameraError for a null argument.
inline void require(const void* argument)
{
    if (!argument)
        throw CameraError(CameraStatus::NullArgument);
}

}   // namespace orvo::sim
