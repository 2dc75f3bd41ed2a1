#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace orvo::cognex {

/// A camera behind a port of a board, in whichever library. A name of a parameter is the camera's own.
/// Threads: host.
/// Throws:  AIKException or runtime_error where the library refuses.
class Camera {
public:
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    virtual void connect() = 0;
    virtual void disconnect() = 0;
    virtual void startAcquisition() = 0;
    virtual void stopAcquisition() = 0;
    /// In pixels, as setHeight().
    virtual void setWidth(int32_t width) = 0;
    virtual void setHeight(int32_t height) = 0;
    // No family does anything with these two.
    virtual void setReservedA(uint32_t value) = 0;
    virtual void setReservedB(uint32_t value) = 0;
    /// For display; empty if the camera has none.
    virtual std::string getName() = 0;

    // The out values are written on success only.
    virtual void getBooleanValue(const std::string& name, bool* value) = 0;
    virtual void getIntegerValue(const std::string& name, int64_t* value) = 0;
    virtual void getFloatValue(const std::string& name, double* value) = 0;
    virtual void getStringValue(const std::string& name, std::string* value) = 0;
    virtual void setBooleanValue(const std::string& name, bool value) = 0;
    virtual void setIntegerValue(const std::string& name, int64_t value) = 0;
    virtual void setFloatValue(const std::string& name, double value) = 0;
    virtual void setStringValue(const std::string& name, const std::string& value) = 0;

protected:
    Camera() = default;
    ~Camera() = default;   // always owned by a shared pointer that was made for its own class
};

/// Throws AIKException if the camera has gone.
std::shared_ptr<Camera> locked(const std::weak_ptr<Camera>& camera);

}   // namespace orvo::cognex
