#pragma once

#include "camera/CamPort.h"
#include "camera/Camera.h"
#include "camera/CameraConfigurator.h"

namespace orvo::cognex {

/// A camera that the board and its applet already use: the adapter accesses its parameters and nothing else.
/// Its handle is valid as long as the library is open.
/// Throws: AIKException "ogc error code: N".
class OgcCamera final : public LibraryCamera {
public:
    explicit OgcCamera(uint64_t handle);

    std::string getName() override;

    void setBooleanValue(const std::string& name, bool value) override;
    void setIntegerValue(const std::string& name, int64_t value) override;
    void setFloatValue(const std::string& name, double value) override;
    void setStringValue(const std::string& name, const std::string& value) override;

    // Deliberately empty: the applet opens, starts and sizes the camera, which streams while it is connected.
    void connect() override {}
    void disconnect() override {}
    void startAcquisition() override {}
    void stopAcquisition() override {}
    void setWidth(int32_t /*width*/) override {}
    void setHeight(int32_t /*height*/) override {}
};

/// An input with the one camera that the library's scan has found on it.
/// Throws: AIKException "ogc error code: N" or "Cam info is not defined".
class OgcCamPort final : public CamPort {
public:
    /// `library` is the handle of the open library, which outlives the port.
    OgcCamPort(int32_t portIndex, uint64_t library) : CamPort(portIndex), m_library(library) {}

protected:
    std::vector<std::shared_ptr<Camera>> detect() override;

private:
    uint64_t m_library;
};

/// The parameters of a camera of the GenICam access library.
class OgcCameraConfigurator final : public FamilyConfigurator<OgcCamera> {};

}   // namespace orvo::cognex
