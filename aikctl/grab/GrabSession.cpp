#include "aikctl/grab/GrabSession.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <utility>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;

constexpr auto kLookInterval = 100ms;   // how often progress and Ctrl-C are looked at

std::string progressText(uint64_t fetched, uint64_t wanted)
{
    constexpr uint64_t kWidth = 40;
    const uint64_t filled = wanted == 0 ? 0 : kWidth * fetched / wanted;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
           std::to_string(fetched) + " of " + std::to_string(wanted) + " pictures";
}

}   // namespace

GrabSession::GrabSession(const std::vector<aik::Channel*>& channels, SessionOptions options,
                         const PictureFolder& folder, Console& console)
    : m_options(std::move(options)), m_console(console)
{
    for (aik::Channel* const channel : channels)
        m_grabs.emplace_back(*channel, m_options.grab, folder);
}

void GrabSession::run()
{
    for (ChannelGrab& grab : m_grabs)
        grab.prepare();
    GrabCameras cameras(m_options.cameras, m_console);
    for (const ChannelGrab& grab : m_grabs)
        cameras.connect(grab.channel());
    acquire(cameras);
    cameras.close();
    if (m_options.cameras.isByActionCommand)
        m_actions = compareActionCommands(m_grabs, m_sent);
    complain();
}

void GrabSession::acquire(GrabCameras& cameras)
{
    for (ChannelGrab& grab : m_grabs)   // before the cameras, so that no picture is lost
        grab.start();
    cameras.start();
    awaitPictures(cameras);
    cameras.stop();
    for (ChannelGrab& grab : m_grabs)
        grab.stop();
    for (ChannelGrab& grab : m_grabs)
        grab.conclude();
}

void GrabSession::awaitPictures(GrabCameras& cameras)
{
    std::mutex mutex;
    std::condition_variable news;
    for (ChannelGrab& grab : m_grabs)
        grab.fetch([&] {
            const std::lock_guard lock(mutex);
            news.notify_one();
        });

    uint64_t shots = 0;   // action commands that were due
    const auto allAre = [&](auto&& state) { return std::all_of(m_grabs.begin(), m_grabs.end(), state); };
    const auto areDone = [&] { return allAre([](const ChannelGrab& grab) { return grab.isDone(); }); };
    const auto isShotDue = [&] {
        return m_options.cameras.isByActionCommand && shots < m_options.grab.count && !areDone() &&
               allAre([&](const ChannelGrab& grab) { return grab.isDone() || grab.fetched() >= shots; });
    };
    std::unique_lock lock(mutex);
    while (!areDone()) {
        if (isShotDue()) {
            ++shots;
            lock.unlock();
            m_sent += cameras.shoot() ? 1 : 0;
            lock.lock();
        }
        news.wait_for(lock, kLookInterval, [&] { return areDone() || isShotDue(); });
        if (m_console.interrupted())
            std::for_each(m_grabs.begin(), m_grabs.end(), [](ChannelGrab& grab) { grab.askToEnd(); });
        showProgress();
    }
    lock.unlock();
    for (ChannelGrab& grab : m_grabs)
        grab.join();
    m_console.progress("");
}

void GrabSession::showProgress() const
{
    if (!m_options.isAlwaysShowingProgress && !m_console.isTerminal())
        return;
    uint64_t fetched = 0;
    uint64_t wanted = 0;
    for (const ChannelGrab& grab : m_grabs) {
        fetched += grab.fetched();
        wanted += grab.isDone() ? grab.fetched() : m_options.grab.count;
    }
    m_console.progress(progressText(fetched, wanted));
}

void GrabSession::complain()
{
    for (const ChannelGrab& grab : m_grabs) {
        const GrabResult& result = grab.result();
        std::string place = "channel ";
        place.append(std::to_string(grab.channel().index())).append(": ");
        if (!result.note.empty())
            m_console.note(place + result.note);
        if (m_options.isFailingOnLoss && result.hasLost())
            m_console.fail(place + "pictures were lost");
        if (result.failure.empty())
            continue;
        if (!result.failedStep.empty())
            place.insert(0, result.failedStep + " of ");
        m_console.fail(place + explained(result.failure));
    }
    for (const ActionCommands& commands : m_actions)
        if (commands.matched < commands.sent)
            m_console.fail(commands.board + ": " + std::to_string(commands.sent - commands.matched) + " of " +
                           std::to_string(commands.sent) +
                           " action commands made no picture, or pictures of different time stamps");
}

}   // namespace orvo::aikctl
