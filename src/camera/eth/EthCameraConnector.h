#pragma once

#include "camera/CameraConnector.h"
#include "camera/eth/EthActionCommands.h"

namespace orvo::cognex {

/// The connector of a board with GigE Vision inputs. Its ports come from the applet, when the library is
/// opened; "Detect" searches each of them for a camera.
/// Throws: AIKException "eth error code: N".
class EthCameraConnector final : public CameraConnector {
public:
    EthCameraConnector();

    /// Ends at the first port that fails, or at the first gap in the numbers of the ports with the
    /// out_of_range of that gap. Does nothing to a closed connector.
    void detect() override;
    void initialize() override;
    void close() override;

protected:
    void updateState(ConnectorState state) override;
    /// Makes the ports anew, by the numbers that the applet tells: a position without one has no port.
    void createPorts(uint64_t library);

private:
    EthActionCommands m_actionCommands;
};

}   // namespace orvo::cognex
