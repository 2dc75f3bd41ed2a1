#include "os/FileLock.h"

#include <system_error>

#include <windows.h>

namespace orvo::os {

namespace {

HANDLE handleOf(intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

}   // namespace

// Nobody else can open a file that is not shared, and the system deletes this one when its handle is closed.
FileLock::FileLock(const std::filesystem::path& path)
    : m_path(path),
      m_handle(reinterpret_cast<intptr_t>(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                                      OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr)))
{
    m_isHeld = handleOf(m_handle) != INVALID_HANDLE_VALUE;
    const auto failure = static_cast<int>(GetLastError());
    if (!m_isHeld && failure != ERROR_SHARING_VIOLATION)
        throw std::system_error(failure, std::system_category());
}

FileLock::~FileLock()
{
    if (m_isHeld)
        CloseHandle(handleOf(m_handle));
}

}   // namespace orvo::os
