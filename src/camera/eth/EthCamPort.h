#pragma once

#include "camera/CamPort.h"

namespace orvo::cognex {

/// A GigE Vision input: several cameras may stand behind it, and it takes the first.
/// Throws: AIKException "eth error code: N", or runtime_error with the library's own words.
class EthCamPort : public CamPort {
public:
    /// `library` is the open library's handle, which outlives the port.
    EthCamPort(int32_t portIndex, uint64_t library) : CamPort(portIndex), m_library(library) {}

    /// Opens the camera and answers it.
    virtual std::shared_ptr<Camera> connect(std::shared_ptr<Camera> camera);

protected:
    std::vector<std::shared_ptr<Camera>> detect() override;

private:
    uint64_t m_library;
};

}   // namespace orvo::cognex
