#pragma once

#include <cstdint>
#include <string>

namespace orvo::cognex {

struct CameraLibrary;

/// The parameters of one camera, by its handle in its library: the one implementation for all families.
/// Threads: host. The camera must be kept while this is in use.
/// Throws:  AIKException with the library's prefix and the number of the failure.
class CameraParameters {
public:
    CameraParameters(const CameraLibrary& library, uint64_t camera) : m_library(library), m_camera(camera) {}

    int64_t integer(const std::string& name) const;
    void setInteger(const std::string& name, int64_t value) const;
    bool boolean(const std::string& name) const;
    void setBoolean(const std::string& name, bool value) const;
    double floatingPoint(const std::string& name) const;
    void setFloatingPoint(const std::string& name, double value) const;
    /// `buffer` may be null: it is where the library finds a place for the text, if it wants one.
    std::string string(const std::string& name, char* buffer) const;
    void setString(const std::string& name, const char* text) const;
    std::string enumeration(const std::string& name) const;
    void setEnumeration(const std::string& name, const char* text) const;
    void execute(const std::string& name) const;

private:
    const CameraLibrary& m_library;
    uint64_t m_camera;
};

}   // namespace orvo::cognex
