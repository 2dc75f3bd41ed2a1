#include "os/FileLock.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvo::os {

namespace {

// False if the last holder has removed the file between our opening and locking it.
bool isStillThere(int file, const std::filesystem::path& path)
{
    struct stat locked {};
    struct stat found {};
    return fstat(file, &locked) == 0 && stat(path.c_str(), &found) == 0 && locked.st_ino == found.st_ino;
}

}   // namespace

FileLock::FileLock(const std::filesystem::path& path) : m_path(path)
{
    for (;;) {
        const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file < 0)
            throw std::system_error(errno, std::generic_category());
        m_handle = file;
        m_isHeld = flock(file, LOCK_EX | LOCK_NB) == 0;
        if (!m_isHeld && errno != EWOULDBLOCK) {   // some file systems know no locks
            const int failure = errno;
            close(file);
            throw std::system_error(failure, std::generic_category());
        }
        if (!m_isHeld || isStillThere(file, path))
            return;
        close(file);
    }
}

FileLock::~FileLock()
{
    if (m_isHeld)
        unlink(m_path.c_str());
    close(static_cast<int>(m_handle));
}

}   // namespace orvo::os
