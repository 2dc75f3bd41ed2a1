#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "aik/aik.h"
#include "os/Os.h"

namespace orvo::bench {

/// The adapter and its board library, loaded from one folder as a host loads them. They stay loaded.
/// Throws:  std::runtime_error from everything, with the name of what is missing or the text of the failed call.
class Adapter {
public:
    /// `folder` is relative to that of this program; it becomes an absolute path.
    explicit Adapter(const std::string& folder = ".");

#define ORVO_MEMBER(name, ordinal) AIK_##name name = nullptr;
    AIK_EXPORTS(ORVO_MEMBER)
#undef ORVO_MEMBER

    /// A function of one of the libraries beside the adapter.
    template <typename Function>
    Function find(const std::string& library, const char* name) const
    {
        return reinterpret_cast<Function>(symbol(library, name));
    }

private:
    os::Symbol symbol(const std::string& library, const char* name) const;
    os::Module load(const std::string& library) const;

    std::string m_folder;
};

/// Throws with the text of a call that has failed.
void check(int32_t code, const char* errstr);

/// The board's channels, opened, set up to deliver square pictures of three bytes a pixel, and started.
class RunningChannels {
public:
    RunningChannels(const Adapter& adapter, uint32_t count, uint32_t side,
                    const char* strategy = "NewestOnly");
    RunningChannels(const RunningChannels&) = delete;
    RunningChannels& operator=(const RunningChannels&) = delete;
    ~RunningChannels();

    int64_t id(size_t channel) const { return m_ids[channel]; }
    /// Delivers a picture on the calling thread; answers false if no block is free for it.
    bool deliver(uint32_t channel, uint64_t word = 0) const { return m_deliver(channel, word) == 1; }
    /// The next picture into `destination`: returns when it has come.
    void fetch(uint32_t channel, void* destination) const;
    /// Returns when a picture has come.
    void wait(uint32_t channel) const;
    /// What the next picture is; it must have come.
    void attributes(uint32_t channel) const;

private:
    const Adapter& m_adapter;
    int32_t (*m_deliver)(uint32_t dma, uint64_t word);
    std::vector<int64_t> m_ids;
};

/// The ids of so many channels of the bench's board, opened. They go with closeChannels().
std::vector<int64_t> openChannels(const Adapter& adapter, uint32_t count);
void closeChannels(const Adapter& adapter, const std::vector<int64_t>& ids);

}   // namespace orvo::bench
