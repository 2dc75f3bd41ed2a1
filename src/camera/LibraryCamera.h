#pragma once

#include "camera/Camera.h"
#include "camera/CameraParameters.h"

namespace orvo::cognex {

/// A camera that is a handle in a camera library: what both families read of it.
class LibraryCamera : public Camera {
public:
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

    const CameraLibrary& library() const { return m_library; }
    /// The library has ended the handle.
    void forgetHandle() { m_handle = 0; }

private:
    const CameraLibrary& m_library;
    uint64_t m_handle;
};

}   // namespace orvo::cognex
