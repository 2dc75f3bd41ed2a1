#pragma once

#include "camera/CamPort.h"

namespace orvo::cognex {

/// An input with the one camera that the library's scan has found on it.
/// Throws: AIKException "ogc error code: N" or "Cam info is not defined".
class OgcCamPort final : public CamPort {
public:
    /// `library` is the open library's handle, which outlives the port.
    OgcCamPort(int32_t portIndex, uint64_t library) : CamPort(portIndex), m_library(library) {}

protected:
    std::vector<std::shared_ptr<Camera>> detect() override;

private:
    uint64_t m_library;
};

}   // namespace orvo::cognex
