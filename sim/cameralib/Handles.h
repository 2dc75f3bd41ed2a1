#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "os/ThreadSafety.h"
#include "sim/seam/Camera.h"

namespace orvo::sim {

/// A call that fails, and what it answers.
class CameraError : public std::exception {
public:
    explicit CameraError(CameraStatus status) : m_status(status) {}
    CameraStatus status() const { return m_status; }
    const char* what() const noexcept override { return "a call to a camera library fails"; }

private:
    CameraStatus m_status;
};

/// Throws CameraError unless the status is Ok.
inline void require(CameraStatus status)
{
    if (status != CameraStatus::Ok)
        throw CameraError(status);
}

/// Throws CameraError for a null argument.
inline void require(const void* argument)
{
    if (!argument)
        throw CameraError(CameraStatus::NullArgument);
}

/// What a camera library has given out for a camera. What a call hands out by address stays here until the
/// next call.
struct CameraHandle {
    uint64_t number = 0;
    uint64_t library = 0;   // the number of its handle
    uint64_t symbol = 0;    // in the journal
    uint32_t port = 0;
    Camera* camera = nullptr;

    os::Mutex mutex;
    std::string text ORVO_GUARDED_BY(mutex);
    CameraIdentity identity ORVO_GUARDED_BY(mutex);
    alignas(std::max_align_t) std::byte record[128] ORVO_GUARDED_BY(mutex) = {};

    /// The record that the library hands out, of one type for all its handles.
    template <typename Record>
    Record& place() ORVO_REQUIRES(mutex)
    {
        static_assert(sizeof(Record) <= sizeof record && std::is_trivial_v<Record>);
        return *new (record) Record{};
    }
};

/// The handles of one camera library: numbers that are never given out twice and end with the
/// session at the latest. Threads: any. All throw CameraError for a handle that isn't one.
class Handles {
public:
    /// Made at the first call and never destroyed: a host may call while the process ends.
    static Handles& instance();

    uint64_t openLibrary(uint32_t boardIndex);
    /// The handles of its cameras end too.
    void closeLibrary(uint64_t library);
    uint32_t boardOf(uint64_t library);

    /// Looks for cameras at the ports whose bits are set in `mask`; ports from `maskedPorts` on have no bit
    /// and are always searched.
    void scan(uint64_t library, uint32_t mask, uint32_t maskedPorts);
    /// The ports at which the latest scan found a camera, and those whose camera is connected, rising.
    std::vector<uint32_t> found(uint64_t library);

    /// A new handle of the camera at a port.
    uint64_t addCamera(uint64_t library, uint32_t port);
    std::shared_ptr<CameraHandle> camera(uint64_t handle);
    void endCamera(uint64_t handle);

    // As the journal has them: the board's index, and c1, c2, ... in the order in which a session gives out
    // its handles.
    std::string librarySymbol(uint64_t library);
    std::string cameraSymbol(uint64_t handle);

private:
    struct OpenLibrary {
        uint32_t boardIndex;
        std::set<uint32_t> found;   // ports
    };

    Handles() = default;
    void endOldSessions() ORVO_REQUIRES(m_mutex);
    uint64_t newNumber() ORVO_REQUIRES(m_mutex);
    OpenLibrary& opened(uint64_t library) ORVO_REQUIRES(m_mutex);

    os::Mutex m_mutex;
    uint64_t m_session ORVO_GUARDED_BY(m_mutex) = 0;
    uint64_t m_given ORVO_GUARDED_BY(m_mutex) = 0;     // handles of this session
    uint64_t m_symbols ORVO_GUARDED_BY(m_mutex) = 0;   // cameras of this session
    std::map<uint64_t, OpenLibrary> m_libraries ORVO_GUARDED_BY(m_mutex);
    std::map<uint64_t, std::shared_ptr<CameraHandle>> m_cameras ORVO_GUARDED_BY(m_mutex);
};

}   // namespace orvo::sim
