#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "camera/CameraLibrary.h"

namespace orvo::cognex {

/// A camera on a port of a board, of whichever family. The names of its parameters are the camera's own.
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

/// Throws AIKException if the camera has been destroyed.
std::shared_ptr<Camera> locked(const std::weak_ptr<Camera>& camera);

/// A camera that is a handle in a camera library: what the families have in common.
class LibraryCamera : public Camera {
public:
    /// 0 once the library has ended it.
    uint64_t handle() const { return m_handle; }
    /// All of its parameters, for reading and for writing.
    CameraParameters parameters() const { return {m_library, m_handle}; }

    // Empty in both families.
    void setReservedA(uint32_t /*value*/) override {}
    void setReservedB(uint32_t /*value*/) override {}

    void getBooleanValue(const std::string& name, bool* value) override;
    void getIntegerValue(const std::string& name, int64_t* value) override;
    void getFloatValue(const std::string& name, double* value) override;
    void getStringValue(const std::string& name, std::string* value) override;

protected:
    LibraryCamera(const CameraLibrary& library, uint64_t handle) : m_library(library), m_handle(handle) {}
    ~LibraryCamera() = default;

    /// The library has ended the handle.
    void forgetHandle() { m_handle = 0; }

private:
    const CameraLibrary& m_library;
    uint64_t m_handle;
};

}   // namespace orvo::cognex
