#include "aikctl/grab/GrabSession.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <iomanip>
#include <mutex>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;

constexpr uint64_t kQueueBytes = 256U << 20U;   // of pictures that wait to be saved
constexpr double kMegabyte = 1e6;
constexpr auto kProgressInterval = 100ms;   // how often progress and Ctrl-C are looked at

std::string progressText(uint64_t fetched, uint64_t wanted)
{
    constexpr uint64_t kWidth = 40;
    const uint64_t filled = wanted == 0 ? 0 : kWidth * fetched / wanted;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
           std::to_string(fetched) + " of " + std::to_string(wanted) + " pictures";
}

/// The fetching threads use what belongs to a scope, and end with it, however it ends.
struct JoinAtEnd {
    GrabSession::Grabs& grabs;

    explicit JoinAtEnd(GrabSession::Grabs& fetching) : grabs(fetching) {}
    JoinAtEnd(const JoinAtEnd&) = delete;
    JoinAtEnd& operator=(const JoinAtEnd&) = delete;
    ~JoinAtEnd()
    {
        for (ChannelGrab& grab : grabs)
            grab.askToEnd();
        for (ChannelGrab& grab : grabs)
            grab.join();
    }
};

std::string secondText(int32_t channel, const GrabSecond& second)
{
    std::ostringstream text;
    text << "channel " << channel << ": " << std::fixed << std::setprecision(1)
         << static_cast<double>(second.pictures) / second.seconds << " pictures/s, "
         << static_cast<double>(second.bytes) / second.seconds / kMegabyte << " MB/s, skipped "
         << second.skipped << ", lost " << (second.lost ? std::to_string(*second.lost) : "?") << ", gaps "
         << second.gaps;
    return text.str();
}

std::string picturesWere(uint64_t count)
{
    return std::to_string(count) + (count == 1 ? " picture was" : " pictures were");
}

/// Why a grab that must not lose pictures fails; empty if it lost none.
std::string lossText(const GrabResult& result)
{
    const uint64_t lost = result.intervals.lost.value_or(0) + result.record.lostByOverflow;
    if (result.hasLost())
        return picturesWere(result.account.skipped) + " skipped, and " + std::to_string(lost) +
               " lost on their way";
    // Each action command is followed up, and a failed grab needs no further reason.
    if (result.intervals.lost || result.record.isTriggered || !result.failure.empty())
        return "";
    return result.intervals.areTooFew
               ? "nobody can tell whether pictures were lost: fewer than three have a time stamp"
               : "nobody can tell whether pictures were lost: they came at no steady rate";
}

}   // namespace

GrabSession::GrabSession(const std::vector<aik::Channel*>& channels, SessionOptions options, Console& console)
    : m_options(std::move(options)), m_console(console), m_cameras(m_options.cameras, console)
{
    GrabOptions grab = m_options.grab;
    grab.isTriggered = m_options.cameras.isByActionCommand;
    for (aik::Channel* const channel : channels)
        m_grabs.emplace_back(*channel, grab);
}

void GrabSession::run(const PictureSaver::Target& target)
{
    for (ChannelGrab& grab : m_grabs)
        grab.prepare();
    for (const ChannelGrab& grab : m_grabs)
        m_cameras.connect(grab.channel());
    const auto saver = makeSaver(target);
    m_isSaving = saver != nullptr;
    if (target.begin && std::ranges::any_of(m_grabs, &ChannelGrab::isReady))
        target.begin();
    for (ChannelGrab& grab : m_grabs)   // before the cameras, so that no picture is lost
        grab.start();
    m_cameras.start();
    awaitPictures(saver ? &saver->queue() : nullptr);
    m_cameras.stop();
    for (ChannelGrab& grab : m_grabs)
        grab.stop();
    m_cameras.close();
    if (saver)
        saver->finish();
    for (ChannelGrab& grab : m_grabs)
        grab.conclude();
    if (m_options.cameras.isByActionCommand)
        m_actions = compareActionCommands(m_grabs, m_sent);
    complain();
}

std::unique_ptr<PictureSaver> GrabSession::makeSaver(const PictureSaver::Target& target) const
{
    if (!target.save)
        return nullptr;
    // A channel that waits for a picture keeps the memory for it, and must not keep all of it.
    uint64_t least = 0;
    for (const ChannelGrab& grab : m_grabs)
        least += 2 * grab.channel().capacity();
    return std::make_unique<PictureSaver>(m_options.encoding, target, m_options.jobs,
                                          std::max(least, kQueueBytes));
}

void GrabSession::awaitPictures(PictureQueue* queue)
{
    std::mutex mutex;
    std::condition_variable news;
    for (ChannelGrab& grab : m_grabs)
        grab.fetch(queue, [&] {
            const std::lock_guard lock(mutex);
            news.notify_one();
        });

    uint64_t shots = 0;   // action commands that were due
    const JoinAtEnd joining(m_grabs);
    const auto allAre = [&](auto&& state) { return std::all_of(m_grabs.begin(), m_grabs.end(), state); };
    const auto areDone = [&] { return allAre([](const ChannelGrab& grab) { return grab.isDone(); }); };
    // Time ends all channels, if not at the same moment: no further command could reach all of them.
    const auto isTimeOver = [&] {
        return m_options.grab.duration &&
               std::any_of(m_grabs.begin(), m_grabs.end(), [](const ChannelGrab& grab) {
                   return grab.isDone() && grab.result().failure.empty();
               });
    };
    const auto isShotDue = [&] {
        return m_options.cameras.isByActionCommand && shots < m_options.grab.count && !areDone() &&
               !m_console.interrupted() && !isTimeOver() &&
               allAre([&](const ChannelGrab& grab) { return grab.isDone() || grab.fetched() >= shots; });
    };
    std::unique_lock lock(mutex);
    while (!areDone()) {
        if (isShotDue()) {
            ++shots;
            lock.unlock();
            m_sent += m_cameras.shoot() ? 1 : 0;
            lock.lock();
        }
        news.wait_for(lock, kProgressInterval, [&] { return areDone() || isShotDue(); });
        if (m_console.interrupted())
            std::for_each(m_grabs.begin(), m_grabs.end(), [](ChannelGrab& grab) { grab.askToEnd(); });
        showProgress();
        showSeconds();
    }
    lock.unlock();
    m_console.progress("");
    showSeconds();
    forgetUnansweredCommand();
}

/// Where time or the user ended the grab, a channel may have ended between the last command and its picture.
void GrabSession::forgetUnansweredCommand()
{
    const bool isEndedEarly = m_console.interrupted() || m_options.grab.duration;
    const auto hasNotAnswered = [this](const ChannelGrab& grab) {
        return grab.result().failure.empty() && grab.fetched() < m_sent;
    };
    if (m_sent > 0 && isEndedEarly && std::any_of(m_grabs.begin(), m_grabs.end(), hasNotAnswered))
        --m_sent;
}

void GrabSession::showProgress()
{
    if (m_options.grab.isWatched || (!m_options.isAlwaysShowingProgress && !m_console.isTerminal()))
        return;
    uint64_t fetched = 0;
    uint64_t wanted = 0;
    for (const ChannelGrab& grab : m_grabs) {
        fetched += grab.fetched();
        wanted += grab.isDone() ? grab.fetched() : m_options.grab.count;
    }
    m_console.progress(m_options.grab.duration ? std::to_string(fetched) + " pictures"
                                               : progressText(fetched, wanted));
}

void GrabSession::showSeconds()
{
    if (!m_options.isShowingSeconds)
        return;
    for (ChannelGrab& grab : m_grabs)
        for (const GrabSecond& second : grab.takeSeconds())
            m_console.out() << secondText(grab.channel().index(), second) << std::endl;
}

void GrabSession::complain()
{
    for (const ChannelGrab& grab : m_grabs) {
        const GrabResult& result = grab.result();
        std::string place = "channel ";
        place.append(std::to_string(grab.channel().index())).append(": ");
        if (!grab.saved().note.empty())
            m_console.note(place + grab.saved().note);
        const std::string loss = m_options.isFailingOnLoss ? lossText(result) : "";
        if (!loss.empty())
            m_console.fail(place + loss);
        if (result.failure.empty())
            continue;
        const std::string step = result.failedStep.empty() ? "" : result.failedStep + " of ";
        m_console.fail(step + place + explained(result.failure));
        if (m_isSaving && grab.fetched() > grab.saved().count)
            m_console.note(place + picturesWere(grab.fetched() - grab.saved().count) +
                           " fetched, but not saved");
    }
    for (const ActionCommands& commands : m_actions)
        if (commands.matched < commands.sent)
            m_console.fail(commands.board + ": " + std::to_string(commands.sent - commands.matched) + " of " +
                           std::to_string(commands.sent) +
                           " action commands made no picture, or pictures of different time stamps");
}

}   // namespace orvo::aikctl
