#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "aikctl/grab/PictureQueue.h"
#include "aikctl/pictures/PictureFile.h"

namespace orvo::aikctl {

/// What became of the pictures that one channel handed to the saver.
struct SavedPictures {
    int32_t channel = 0;
    std::atomic<bool> hasFailed{false};   // no further picture is saved

    // The saver's until its finish().
    uint64_t count = 0;
    std::vector<std::string>
        files;          // in the order of the pictures' numbers; empty for one that is not saved
    std::string note;   // of the first picture; worth telling, but no failure
    std::string failure;
    std::chrono::duration<double> encoding{0};   // time of all threads
    std::chrono::duration<double> writing{0};
};

/// Encodes pictures and writes them, on threads of its own, beside those that fetch.
/// Threads: queue() on any, the rest on one.
class PictureSaver {
public:
    /// Where pictures go. save() and record() are called on several threads if there are several jobs; what
    /// they throw fails the channel of the picture.
    struct Target {
        /// Writes an encoded picture, and returns the name of its file. Without it, pictures are discarded.
        std::function<std::string(const QueuedPicture& picture, const PictureFile& file)> save{};
        /// Notes a picture that save() has written.
        std::function<void(const std::string& file, const QueuedPicture& picture)> record{};
        /// Makes room, if there is something to do. Called by whoever knows that pictures will come.
        std::function<void()> begin{};
    };

    /// `jobs`: the number of threads. `limit`: the most bytes of pictures that wait. Throws system_error.
    PictureSaver(const Encoding& encoding, Target target, unsigned jobs, uint64_t limit);
    PictureSaver(const PictureSaver&) = delete;
    PictureSaver& operator=(const PictureSaver&) = delete;
    ~PictureSaver();

    /// What is put here is saved. The SavedPictures that a picture names outlive finish().
    PictureQueue& queue() { return m_queue; }
    /// Returns when all pictures are saved. No more may come.
    void finish();

private:
    void work();
    void save(const QueuedPicture& picture, PictureFile& file);

    const Encoding m_encoding;
    const Target m_target;
    PictureQueue m_queue;
    std::mutex m_mutex;   // guards the SavedPictures of all channels
    std::vector<std::thread> m_threads;
};

}   // namespace orvo::aikctl
