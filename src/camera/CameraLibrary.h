#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace orvo::cognex {

/// What the camera libraries have in common, one object a library: the words before the number of a failure,
/// and the functions that differ in their names alone. Handles are numbers, 0 means none; each function
/// returns 0 or the number of its failure, and writes its out word on success only.
struct CameraLibrary {
    const char* errorPrefix;

    int32_t (*closeBoard)(uint64_t library);

    int32_t (*setInteger)(uint64_t camera, const char* name, int64_t value);
    int32_t (*getInteger)(uint64_t camera, const char* name, int64_t* value);
    int32_t (*setBoolean)(uint64_t camera, const char* name, int32_t value);
    int32_t (*getBoolean)(uint64_t camera, const char* name, int32_t* value);
    int32_t (*setFloat)(uint64_t camera, const char* name, double value);
    int32_t (*getFloat)(uint64_t camera, const char* name, double* value);
    /// The text that a getter points to is the library's, and valid until the next call with that camera.
    int32_t (*setString)(uint64_t camera, const char* name, const char* text);
    int32_t (*getString)(uint64_t camera, const char* name, char** text);
    int32_t (*setEnumeration)(uint64_t camera, const char* name, const char* text);
    int32_t (*getEnumeration)(uint64_t camera, const char* name, char** text);
    int32_t (*executeCommand)(uint64_t camera, const char* name);

    /// Throws AIKException with the prefix and the number in decimal for any `status` but 0.
    void check(int32_t status) const;
};

/// An open camera library, by its handle: 0 while it is closed. Closed by the destructor at the latest.
class LibraryHandle {
public:
    using Close = int32_t (*)(uint64_t library);

    explicit LibraryHandle(Close close) : m_close(close) {}
    LibraryHandle(const LibraryHandle&) = delete;
    LibraryHandle& operator=(const LibraryHandle&) = delete;
    ~LibraryHandle() { reset(); }

    uint64_t get() const { return m_handle; }

    /// Closes what is open, whatever the library answers, and takes over `handle`.
    void reset(uint64_t handle = 0)
    {
        if (const uint64_t open = std::exchange(m_handle, handle))
            m_close(open);
    }

private:
    Close m_close;
    uint64_t m_handle = 0;
};

/// The parameters of one camera, by its handle in its library: the one implementation for all families.
/// Threads: host. The camera must outlive this.
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
    /// `buffer` may be null: it is where the library may put the text, if it wants a place for it.
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
