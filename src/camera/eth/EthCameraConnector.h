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

    /// Stops at the first port that fails, or with out_of_range at the first gap in the numbers of the ports.
    /// Does nothing to a closed connector.
    void detect() override;
    void initialize() override;
    void close() override;

protected:
    void updateState(ConnectorState state) override;
    /// Makes the ports again, by the numbers that the applet gives: a position without one has no port.
    void createPorts(uint64_t library);

private:
    EthActionCommands m_actionCommands;
};

}   // namespace orvo::cognex
