#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace orvo::cognex {

class AppletProcess;

/// A loaded applet: the board library's handle, and its processes. Complete when it is made; nothing runs yet.
/// Threads: host, no lock.
/// Owns:    the handle and the processes, which go first.
/// Throws:  AIKException "brd error code: N" from the constructor if the number of processes can't be had.
class AppletWrapper {
public:
    /// Takes the handle, also when it throws. A process that fails is left out.
    explicit AppletWrapper(void* handle);
    AppletWrapper(const AppletWrapper&) = delete;
    AppletWrapper& operator=(const AppletWrapper&) = delete;
    virtual ~AppletWrapper();

    /// By rising number at the board.
    const std::vector<std::shared_ptr<AppletProcess>>& processes() const { return m_processes; }
    void* handle() const { return m_handle.get(); }

private:
    uint32_t processCount() const;

    struct FreeGrabber {
        void operator()(void* handle) const;
    };
    std::unique_ptr<void, FreeGrabber> m_handle;
    std::vector<std::shared_ptr<AppletProcess>> m_processes;
};

/// Throws AIKException if the applet has gone.
std::shared_ptr<AppletWrapper> locked(const std::weak_ptr<AppletWrapper>& applet);

}   // namespace orvo::cognex
