#pragma once

#include "camera/LibraryCamera.h"

namespace orvo::cognex {

/// A GigE Vision camera: opened, started and sized through its library.
/// Owns:    the handle, and releases it.
/// Throws:  AIKException "eth error code: N", or runtime_error with the library's own words.
class EthCamera final : public LibraryCamera {
public:
    explicit EthCamera(uint64_t handle);
    ~EthCamera();

    void connect() override;
    /// A camera that refuses keeps its handle, for the release.
    void disconnect() override;
    void startAcquisition() override;
    void stopAcquisition() override;
    void setWidth(int32_t width) override;
    void setHeight(int32_t height) override;
    std::string getName() override;

    // Empty on purpose: this family's parameters are written through the configurator alone.
    void setBooleanValue(const std::string& /*name*/, bool /*value*/) override {}
    void setIntegerValue(const std::string& /*name*/, int64_t /*value*/) override {}
    void setFloatValue(const std::string& /*name*/, double /*value*/) override {}
    void setStringValue(const std::string& /*name*/, const std::string& /*value*/) override {}
};

}   // namespace orvo::cognex
