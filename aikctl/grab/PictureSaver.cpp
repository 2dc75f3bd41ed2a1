#include "aikctl/grab/PictureSaver.h"

#include <exception>
#include <utility>

namespace orvo::aikctl {

PictureSaver::PictureSaver(const Encoding& encoding, Target target, unsigned jobs, uint64_t limit)
    : m_encoding(encoding), m_target(std::move(target)), m_queue(limit)
{
    try {
        for (unsigned job = 0; job < jobs; ++job)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::exception&) {
        finish();
        throw;
    }
}

PictureSaver::~PictureSaver()
{
    finish();
}

void PictureSaver::finish()
{
    m_queue.close();
    for (std::thread& thread : m_threads)
        thread.join();
    m_threads.clear();
}

void PictureSaver::work()
{
    PictureFile file;
    while (auto picture = m_queue.take()) {
        if (!picture->saved->hasFailed)
            save(*picture, file);
        m_queue.giveBack(std::move(picture));
    }
}

void PictureSaver::save(const QueuedPicture& picture, PictureFile& file)
{
    using std::chrono::steady_clock;
    SavedPictures& saved = *picture.saved;
    try {
        const auto begin = steady_clock::now();
        encode(picture.picture, m_encoding, file);
        const auto encoded = steady_clock::now();
        const std::string name = m_target.save(picture, file);
        const auto written = steady_clock::now();

        {
            const std::lock_guard lock(m_mutex);
            ++saved.count;
            if (saved.files.size() < picture.number)
                saved.files.resize(picture.number);
            saved.files[picture.number - 1] = name;
            saved.encoding += encoded - begin;
            saved.writing += written - encoded;
            if (picture.number == 1)
                saved.note = file.note;
        }
        if (m_target.record)
            m_target.record(name, picture);
    } catch (const std::exception& failure) {
        const std::lock_guard lock(m_mutex);
        if (saved.failure.empty())
            saved.failure = failure.what();
        saved.hasFailed = true;
    }
}

}   // namespace orvo::aikctl
