#pragma once

#include "camera/LibraryCamera.h"

namespace orvo::cognex {

/// A camera that the board and its applet already talk to: its parameters, and nothing else of it, are ours.
/// Its handle lives as long as the library is open.
/// Throws: AIKException "ogc error code: N".
class OgcCamera final : public LibraryCamera {
public:
    explicit OgcCamera(uint64_t handle);

    std::string getName() override;

    void setBooleanValue(const std::string& name, bool value) override;
    void setIntegerValue(const std::string& name, int64_t value) override;
    void setFloatValue(const std::string& name, double value) override;
    void setStringValue(const std::string& name, const std::string& value) override;

    // Empty on purpose: the applet opens, starts and sizes the camera, and it streams while it is connected.
    void connect() override {}
    void disconnect() override {}
    void startAcquisition() override {}
    void stopAcquisition() override {}
    void setWidth(int32_t /*width*/) override {}
    void setHeight(int32_t /*height*/) override {}
};

}   // namespace orvo::cognex
