#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "os/ThreadSafety.h"
#include "sim/brdlib5/Applet.h"
#include "sim/brdlib5/MemoryHead.h"
#include "sim/brdlib5/Pacer.h"
#include "sim/brdlib5/brdlib5.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// One DMA port of an open board: makes the pictures of a run, on a thread of its own or by hand, and calls
/// back. If a camera feeds the port, it decides when pictures come and how they look. Threads: any. Only one
/// thread delivers at a time, so callbacks don't overlap; no lock is held during a callback, nor while a
/// thread waits to deliver. Ownership: the running thread shares the channel, which so outlives its board for
/// as long as a callback takes.
class DmaChannel : public std::enable_shared_from_this<DmaChannel> {
public:
    using Extent = uint32_t Geometry::*;
    using Limit = uint32_t DmaDescription::*;

    /// `camera`: what feeds the port, null for the applet's own rate and pictures.
    DmaChannel(uint32_t boardIndex, const DmaDescription& description, const PictureFaults& faults,
               Camera* camera);
    DmaChannel(const DmaChannel&) = delete;
    DmaChannel& operator=(const DmaChannel&) = delete;
    ~DmaChannel();

    uint32_t id() const { return m_description.id; }

    /// Changes apply from the next start. Those out of the applet's limits throw BrdError.
    Geometry geometry() const;
    void setExtent(Extent extent, Limit most, Limit step, uint32_t value);
    void setFormat(uint32_t number);

    /// Null removes the callback.
    void setCallback(const BrdApcControl* control);

    /// Begins a run of at most `pictureCount` pictures, -1 for no limit. Throws BrdError, and nothing has
    /// begun.
    void start(std::shared_ptr<MemoryHead> head, int64_t pictureCount);
    /// Ends the run, if there is one. When it returns no callback is under way and none will start, and all
    /// threads of ended runs have ended too. Inside a callback it waits for neither: a later stop joins the
    /// thread.
    void stop();

    /// Pictures of the present or latest run for which no block was free.
    int64_t lostPictures() const;
    void giveBack(MemoryHead& head, int64_t blockIndex);

    /// By hand: results as OrvoSim_deliver() and OrvoSim_callBack() have them.
    int32_t deliver(uint32_t count);
    int32_t callBack(int64_t pictureNumber);

private:
    struct Run;
    using Lock = os::MutexLock;

    void joinEndedThreads();
    void runByItself(const std::shared_ptr<Run>& run);
    std::optional<uint64_t> awaitPicture(Run& run, Lock& lock) ORVO_REQUIRES(m_mutex);
    std::optional<uint64_t> awaitExposure(Run& run, Lock& lock) ORVO_REQUIRES(m_mutex);
    std::optional<uint64_t> awaitDueTime(Run& run, Lock& lock) ORVO_REQUIRES(m_mutex);
    bool beginDelivery(Lock& lock, const Run* run) ORVO_REQUIRES(m_mutex);
    void endDelivery() ORVO_REQUIRES(m_mutex);
    std::optional<Fate> produce(Run& run, uint64_t timestamp) ORVO_REQUIRES(m_mutex);
    std::optional<Fate> fillBlock(Run& run, uint64_t timestamp) ORVO_REQUIRES(m_mutex);
    void call(int64_t pictureNumber) ORVO_REQUIRES(m_mutex);

    const DmaDescription m_description;
    const PictureFaults m_faults;
    DmaAccount& m_account;
    Camera* const m_camera;

    mutable os::Mutex m_mutex;
    std::condition_variable m_changed;   // the deliverer, the run, or a block given back
    Geometry m_geometry ORVO_GUARDED_BY(m_mutex);
    std::optional<BrdApcControl> m_callback ORVO_GUARDED_BY(m_mutex);
    std::shared_ptr<Run> m_run ORVO_GUARDED_BY(m_mutex);                   // null while the DMA is stopped
    std::optional<std::thread::id> m_deliverer ORVO_GUARDED_BY(m_mutex);   // makes a picture or calls back
    int64_t m_lost ORVO_GUARDED_BY(m_mutex) = 0;
    std::vector<std::thread> m_endedThreads ORVO_GUARDED_BY(m_mutex);   // of ended runs, not joined yet
    os::Mutex m_joining;                                                // held while they are joined
};

}   // namespace orvo::sim
