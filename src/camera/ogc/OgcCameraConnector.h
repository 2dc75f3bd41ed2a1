#pragma once

#include "camera/CameraConnector.h"

namespace orvo::cognex {

/// The connector of the other boards: their ports come from a scan of the library, at each "Detect".
/// Throws: AIKException "ogc error code: N".
class OgcCameraConnector final : public CameraConnector {
public:
    OgcCameraConnector();

    /// Makes the ports again. A failure of the scan or of a port is logged, and the call succeeds.
    void detect() override;
    void initialize() override;
    void close() override;

private:
    void scan();
};

}   // namespace orvo::cognex
