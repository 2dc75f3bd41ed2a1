#pragma once

#include <cstdint>
#include <utility>

namespace orvo::cognex {

/// An open camera library, by its handle: 0 while it is closed. Closes it at the latest when it goes.
class LibraryHandle {
public:
    using Close = int32_t (*)(uint64_t library);

    explicit LibraryHandle(Close close) : m_close(close) {}
    LibraryHandle(const LibraryHandle&) = delete;
    LibraryHandle& operator=(const LibraryHandle&) = delete;
    ~LibraryHandle() { reset(); }

    uint64_t get() const { return m_handle; }

    /// Closes what is open, whatever the library says to it, and takes over `handle`.
    void reset(uint64_t handle = 0)
    {
        if (const uint64_t open = std::exchange(m_handle, handle))
            m_close(open);
    }

private:
    Close m_close;
    uint64_t m_handle = 0;
};

}   // namespace orvo::cognex
