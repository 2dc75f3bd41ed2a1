#pragma once

#include <cstdint>
#include <memory>

namespace orvo::cognex {

class AppletWrapper;
class BoardWrapper;
class CameraConfigurator;
class CameraConnector;

// The camera families: a table in the source has one row for each.

/// A connector of the family that the board's type belongs to. Throws AIKException "Cam port type is not
/// connectable." for a type of none, and what BoardWrapper::boardType() throws.
std::unique_ptr<CameraConnector> createCameraConnector(const std::weak_ptr<BoardWrapper>& board,
                                                       const std::weak_ptr<AppletWrapper>& applet);

/// A configurator of the family with that number: 0 GenICam access library, 1 GigE Vision. Throws
/// AIKException for any other. Unused: connectors make their own.
std::unique_ptr<CameraConfigurator> createCameraConfigurator(int32_t portType);

}   // namespace orvo::cognex
