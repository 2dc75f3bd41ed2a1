#pragma once

#include "camera/CamPort.h"
#include "camera/Camera.h"
#include "camera/CameraConfigurator.h"

namespace orvo::cognex {

/// A GigE Vision camera: opened, started and sized through its library.
/// Owns:    the handle, and releases it.
/// Throws:  AIKException "eth error code: N", or runtime_error with the library's own words.
class EthCamera final : public LibraryCamera {
public:
    explicit EthCamera(uint64_t handle);
    ~EthCamera();

    void connect() override;
    /// A camera that refuses keeps its handle, so that it is released.
    void disconnect() override;
    void startAcquisition() override;
    void stopAcquisition() override;
    void setWidth(int32_t width) override;
    void setHeight(int32_t height) override;
    std::string getName() override;

    // Deliberately empty: the parameters of this family are written through the configurator alone.
    void setBooleanValue(const std::string& /*name*/, bool /*value*/) override {}
    void setIntegerValue(const std::string& /*name*/, int64_t /*value*/) override {}
    void setFloatValue(const std::string& /*name*/, double /*value*/) override {}
    void setStringValue(const std::string& /*name*/, const std::string& /*value*/) override {}
};

/// A GigE Vision input: there may be several cameras on it, and it takes the first.
/// Throws: AIKException "eth error code: N", or runtime_error with the library's own words.
class EthCamPort : public CamPort {
public:
    /// `library` is the handle of the open library, which outlives the port.
    EthCamPort(int32_t portIndex, uint64_t library) : CamPort(portIndex), m_library(library) {}

    /// Opens the camera and returns it.
    virtual std::shared_ptr<Camera> connect(std::shared_ptr<Camera> camera);

protected:
    std::vector<std::shared_ptr<Camera>> detect() override;

private:
    uint64_t m_library;
};

/// The parameters of a GigE Vision camera.
class EthCameraConfigurator final : public FamilyConfigurator<EthCamera> {};

}   // namespace orvo::cognex
