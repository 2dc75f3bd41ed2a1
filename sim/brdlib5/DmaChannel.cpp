#include "sim/brdlib5/DmaChannel.h"

#include <string>
#include <system_error>
#include <utility>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/Pacer.h"
#include "sim/orvo_sim.h"
#include "sim/pictures/CameraPainter.h"

namespace orvo::sim {

namespace {

constexpr double kManualRateOfFreeRuns = 1'000;   // pictures per second, for the time stamps alone

uint64_t ticksPerPicture(double rate)
{
    return static_cast<uint64_t>(static_cast<double>(kTimestampFrequency) /
                                 (rate > 0 ? rate : kManualRateOfFreeRuns));
}

/// Releases a mutex for a scope, inside that of the lock that holds it.
class ORVO_SCOPED_CAPABILITY Unlocked {
public:
    explicit Unlocked(os::Mutex& mutex) ORVO_RELEASE(mutex) : m_mutex(mutex) { m_mutex.unlock(); }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;
    ~Unlocked() ORVO_RELEASE() { m_mutex.lock(); }

private:
    os::Mutex& m_mutex;
};

}   // namespace

/// What belongs to one run. The channel's mutex guards it, which clang's analysis can't follow; the painters
/// belong to the delivering thread.
struct DmaChannel::Run {
    Run(std::shared_ptr<MemoryHead> ring, const PictureChoice& shows, const Geometry& geometry,
        int64_t pictureCount, Pacer schedule, Camera* sender)
        : head(std::move(ring)),
          source(sender ? nullptr : shows.sourceFor(geometry)),
          painter(shows, geometry),
          limit(pictureCount),
          isManual(orvo_sim_core()->isManual()),
          pacer(std::move(schedule)),
          stream(sender && !isManual ? sender->openStream() : nullptr)
    {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run()
    {
        if (stream)
            stream->close();
    }

    void paint(const CameraView& shown, uint64_t number, std::span<std::byte> block)
    {
        if (source)
            source->paint(number, block);
        else
            painter.paint(shown, number, block);
    }

    const std::shared_ptr<MemoryHead> head;
    const std::unique_ptr<PictureSource> source;   // null: the camera has its own pictures
    CameraPainter painter;
    const int64_t limit;   // of pictures, -1: none
    const bool isManual;
    Pacer pacer;
    CameraStream* const stream;   // null: the camera doesn't say when pictures come
    CameraView view;              // of the picture that is made now
    uint64_t exposures = 0;       // pictures made, whatever became of them
    int64_t pictures = 0;         // those that got a number
    bool isEnded = false;
    std::thread thread;   // that delivers; none if the run is manual

    bool isComplete() const { return limit >= 0 && pictures >= limit; }
};

DmaChannel::DmaChannel(uint32_t boardIndex, const DmaDescription& description, const PictureFaults& faults,
                       Camera* camera)
    : m_description(description),
      m_faults(faults),
      m_account(orvo_sim_core()->account(boardIndex, description.id)),
      m_camera(camera),
      m_geometry(description.geometry)
{}

DmaChannel::~DmaChannel()
{
    // Those of runs that a callback ended by closing its own board; no later stop could join them.
    for (std::thread& thread : m_endedThreads)
        thread.detach();
}

Geometry DmaChannel::geometry() const
{
    const os::MutexLock lock(m_mutex);
    return m_geometry;
}

void DmaChannel::setExtent(Extent extent, Limit most, Limit step, uint32_t value)
{
    if (value > m_description.*most || value % m_description.*step != 0)
        throw BrdError(kOutOfRange, std::to_string(value) + " is above " +
                                        std::to_string(m_description.*most) + " or no multiple of " +
                                        std::to_string(m_description.*step));
    const os::MutexLock lock(m_mutex);
    m_geometry.*extent = value;
}

void DmaChannel::setFormat(uint32_t number)
{
    const BoardFormat* const format = findBoardFormat(number);
    if (!format)
        throw BrdError(kOutOfRange, "There is no format " + std::to_string(number));
    const os::MutexLock lock(m_mutex);
    m_geometry.format = format;
}

void DmaChannel::setCallback(const BrdApcControl* control)
{
    if (control && !control->func)
        throw BrdError(kNullArgument, "The callback is null");
    const os::MutexLock lock(m_mutex);
    m_callback = control ? std::optional(*control) : std::nullopt;
}

void DmaChannel::start(std::shared_ptr<MemoryHead> head, int64_t pictureCount)
{
    const os::MutexLock lock(m_mutex);
    if (m_run)
        throw BrdError(kAlreadyRunning, "The DMA is running already");
    const Pacer pacer(m_description.picturesPerSecond, m_faults, Pacer::Clock::now());
    auto run = std::make_shared<Run>(std::move(head), m_description.pictures, m_geometry, pictureCount, pacer,
                                     m_camera);
    run->head->beginUse();
    m_account.beginRun(m_camera ? m_camera->pictureRate() : m_description.picturesPerSecond);
    m_lost = 0;
    m_run = run;
    if (run->isManual)
        return;
    try {
        run->thread = std::thread([self = shared_from_this(), run] { self->runByItself(run); });
    } catch (const std::system_error&) {
        m_run.reset();
        run->head->endUse();
        throw;
    }
}

void DmaChannel::stop()
{
    Lock lock(m_mutex);
    const std::shared_ptr<Run> run = std::move(m_run);
    m_run.reset();
    if (run)
        run->isEnded = true;
    if (run && run->stream)
        run->stream->cancel();
    if (run && run->thread.joinable())
        m_endedThreads.push_back(std::move(run->thread));
    m_changed.notify_all();
    const auto isDeliverer = [&]()
                                 ORVO_REQUIRES(m_mutex) { return m_deliverer == std::this_thread::get_id(); };
    while (m_deliverer && !isDeliverer())
        m_changed.wait(lock.native());
    if (run)
        run->head->endUse();
    if (isDeliverer())
        return;
    lock.unlock();
    joinEndedThreads();
}

void DmaChannel::joinEndedThreads()
{
    const os::MutexLock joining(m_joining);   // a second stop returns no earlier than the first
    std::vector<std::thread> ended;
    {
        const Lock lock(m_mutex);
        ended.swap(m_endedThreads);
    }
    for (std::thread& thread : ended)
        thread.join();
}

int64_t DmaChannel::lostPictures() const
{
    const os::MutexLock lock(m_mutex);
    return m_lost;
}

void DmaChannel::giveBack(MemoryHead& head, int64_t blockIndex)
{
    head.giveBack(blockIndex);
    const os::MutexLock lock(m_mutex);
    m_changed.notify_all();
}

int32_t DmaChannel::deliver(uint32_t count)
{
    Lock lock(m_mutex);
    const std::shared_ptr<Run> run = m_run;
    if (!run)
        return ORVO_SIM_NOT_RUNNING;
    if (m_deliverer == std::this_thread::get_id())
        return ORVO_SIM_BUSY;
    int32_t delivered = 0;
    for (; count > 0 && beginDelivery(lock, run.get()); --count) {
        if (m_camera)
            run->view = m_camera->view();
        const uint64_t timestamp =
            run->isManual ? (run->exposures + 1) * ticksPerPicture(m_description.picturesPerSecond)
                          : timestampOf(Pacer::Clock::now());
        delivered += produce(*run, timestamp) == Fate::Delivered;
        endDelivery();
    }
    return delivered;
}

int32_t DmaChannel::callBack(int64_t pictureNumber)
{
    Lock lock(m_mutex);
    if (m_deliverer == std::this_thread::get_id())
        return ORVO_SIM_BUSY;
    beginDelivery(lock, nullptr);
    const bool isRegistered = m_callback.has_value();
    call(pictureNumber);
    endDelivery();
    return isRegistered ? 0 : ORVO_SIM_NOT_RUNNING;
}

void DmaChannel::runByItself(const std::shared_ptr<Run>& run)
{
    Lock lock(m_mutex);
    for (;;) {
        const auto timestamp = awaitPicture(*run, lock);
        if (!timestamp || !beginDelivery(lock, run.get()))
            return;
        produce(*run, *timestamp);
        endDelivery();
    }
}

/// The time stamp of the next picture once it has come; nothing when the run has ended.
std::optional<uint64_t> DmaChannel::awaitPicture(Run& run, Lock& lock)
{
    return run.stream ? awaitExposure(run, lock) : awaitDueTime(run, lock);
}

std::optional<uint64_t> DmaChannel::awaitExposure(Run& run, Lock& lock)
{
    Exposure exposure;
    {
        const Unlocked unlocked(m_mutex);
        if (!run.stream->await(exposure))
            return std::nullopt;
    }
    const Pacer::Clock::time_point time{std::chrono::nanoseconds(exposure.timeNs)};
    if (m_faults.jitter.count() > 0)
        m_changed.wait_until(lock.native(), time + run.pacer.nextJitter(), [&] { return run.isEnded; });
    if (run.isEnded)
        return std::nullopt;
    run.view = exposure.view;
    return timestampOf(time);
}

/// Without a rate the board waits for a free block as well, instead of dropping what it could have made.
std::optional<uint64_t> DmaChannel::awaitDueTime(Run& run, Lock& lock)
{
    if (Pacer::Clock::now() < run.pacer.due())   // to wait for what is due already costs a good deal
        m_changed.wait_until(lock.native(), run.pacer.due(), [&] { return run.isEnded; });
    const bool isScheduled = m_description.picturesPerSecond > 0;
    if (!isScheduled)
        m_changed.wait(lock.native(), [&] { return run.isEnded || run.head->freeCount() > 0; });
    if (run.isEnded)
        return std::nullopt;
    const auto due = isScheduled ? run.pacer.due() : Pacer::Clock::now();
    run.pacer.advance();
    return timestampOf(due);
}

/// Waits until no other thread delivers. False, and nothing has begun, if the run is over before that.
bool DmaChannel::beginDelivery(Lock& lock, const Run* run)
{
    const auto isOver = [&] { return run && (run->isEnded || run->isComplete()); };
    while (m_deliverer && !isOver())
        m_changed.wait(lock.native());
    if (isOver())
        return false;
    m_deliverer = std::this_thread::get_id();
    return true;
}

void DmaChannel::endDelivery()
{
    m_deliverer.reset();
    m_changed.notify_all();
}

/// Makes one picture, and enters into the ledger what became of it. Nothing, if the run ended meanwhile.
std::optional<Fate> DmaChannel::produce(Run& run, uint64_t timestamp)
{
    const auto isEvery = [&](uint64_t n) { return n > 0 && run.exposures % n == 0; };
    std::optional<Fate> fate = Fate::Fault;
    ++run.exposures;
    if (isEvery(m_faults.dropEvery))
        fate = Fate::Fault;
    else if (isEvery(m_faults.negativeEvery))
        call(m_faults.negativeNumber);
    else
        fate = fillBlock(run, timestamp);
    if (fate)
        m_account.enter(*fate);
    return fate;
}

std::optional<Fate> DmaChannel::fillBlock(Run& run, uint64_t timestamp)
{
    const auto block = run.head->takeNext();
    if (!block) {
        ++m_lost;
        return Fate::NoBlock;
    }
    const int64_t number = ++run.pictures;
    const CameraView view = run.view;
    {
        const Unlocked unlocked(m_mutex);
        run.paint(view, static_cast<uint64_t>(number), block->memory);
    }
    if (run.isEnded) {
        run.head->putBack(block->index);
        return std::nullopt;
    }
    run.head->publish(block->index, number, timestamp);
    call(number);
    return Fate::Delivered;
}

void DmaChannel::call(int64_t pictureNumber)
{
    const std::optional<BrdApcControl> callback = m_callback;
    if (!callback)
        return;
    const Unlocked unlocked(m_mutex);
    callback->func(pictureNumber, callback->data);
}

}   // namespace orvo::sim
