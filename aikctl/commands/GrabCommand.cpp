#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/commands/CameraOptions.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/commands/FileOptions.h"
#include "aikctl/console/Console.h"
#include "aikctl/grab/ChannelGrab.h"
#include "aikctl/grab/GrabCameras.h"
#include "aikctl/grab/GrabReport.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;

constexpr auto kLookInterval = 100ms;   // how often progress and Ctrl-C are looked at

constexpr uint64_t kMostPictures = 1'000'000'000;

std::string progressText(uint64_t fetched, uint64_t wanted)
{
    constexpr uint64_t kWidth = 40;
    const uint64_t filled = wanted == 0 ? 0 : kWidth * fetched / wanted;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
           std::to_string(fetched) + " of " + std::to_string(wanted) + " pictures";
}

/// `grab`: pictures from chosen channels into files, all channels at the same time, and a report.
class GrabCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    using Grabs = std::deque<ChannelGrab>;   // a deque never moves its elements

    void choose(std::vector<aik::Channel>& channels, const PictureFolder& folder, Grabs& grabs) const;
    void fetch(Grabs& grabs, GrabCameras& cameras, Console& console) const;
    void showProgress(const Grabs& grabs, Console& console) const;

    GrabOptions m_options;
    CameraOptions m_cameraOptions;
    double m_timeoutSeconds = 5;
    ChannelsChoice m_channels;
    FileOptions m_fileOptions;
    bool m_isShowingProgress = false;
};

void GrabCommand::declare(CLI::App& self)
{
    declareChannels(self, m_channels);
    self.add_option("-n,--count", m_options.count, "Pictures from each channel")
        ->check(wholeNumber(1, kMostPictures))
        ->capture_default_str();
    declareFileOptions(self, m_fileOptions);
    self.add_option("-s,--strategy", m_options.strategy,
                    "What happens when pictures come faster than they are saved; without it, the adapter's "
                    "own default")
        ->transform(CLI::IsMember({"NewestOnly", "OldestFirst", "OldestFirstOverwrite"}, CLI::ignore_case));
    self.add_flag("--planar", m_options.isPlanar, "Have the adapter split the colours into planes");
    declareCameraOptions(self, m_cameraOptions);
    self.add_option("-t,--timeout", m_timeoutSeconds, "The longest wait for one picture, in seconds")
        ->check(CLI::Range(0.001, 86'400.0))
        ->capture_default_str();
    self.add_flag("--progress", m_isShowingProgress, "Show progress even if standard error is no terminal");
}

void GrabCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    m_options.timeout = std::chrono::duration<double>(m_timeoutSeconds);
    m_options.isTimed = m_cameraOptions.isByActionCommand;
    m_options.encoding = m_fileOptions.encoding;
    const PictureFolder folder(m_fileOptions.folder, m_fileOptions.isOverwriting);
    std::vector<aik::Channel> channels = adapter.openAll();

    Grabs grabs;
    choose(channels, folder, grabs);
    for (ChannelGrab& grab : grabs)
        grab.prepare();
    GrabCameras cameras(m_cameraOptions, console);
    for (const ChannelGrab& grab : grabs)
        cameras.connect(grab.channel());
    for (ChannelGrab& grab : grabs)   // before the cameras, so that no picture is lost
        grab.start();
    cameras.start();
    fetch(grabs, cameras, console);
    cameras.stop();
    for (ChannelGrab& grab : grabs)
        grab.stop();
    cameras.close();

    for (const ChannelGrab& grab : grabs) {
        const GrabResult& result = grab.result();
        std::string place = "channel ";
        place.append(std::to_string(grab.channel().index())).append(": ");
        if (!result.note.empty())
            console.note(place + result.note);
        if (result.failure.empty())
            continue;
        if (!result.failedStep.empty())
            place.insert(0, result.failedStep + " of ");
        console.fail(place + explained(result.failure));
    }
    releaseAll(channels, console);
    const GrabReport report(grabs, folder, console.interrupted());
    if (common.json)
        console.print(report.toJson());
    else
        report.printTable(console.out());
}

void GrabCommand::choose(std::vector<aik::Channel>& channels, const PictureFolder& folder, Grabs& grabs) const
{
    for (const size_t index : chooseChannels(channels, m_channels))
        grabs.emplace_back(channels[index], m_options, folder);
}

void GrabCommand::fetch(Grabs& grabs, GrabCameras& cameras, Console& console) const
{
    std::mutex mutex;
    std::condition_variable news;
    for (ChannelGrab& grab : grabs)
        grab.fetch([&] {
            const std::lock_guard lock(mutex);
            news.notify_one();
        });

    uint64_t shots = 0;   // action commands sent
    const auto allAre = [&](auto&& state) { return std::all_of(grabs.begin(), grabs.end(), state); };
    const auto areDone = [&] { return allAre([](const ChannelGrab& grab) { return grab.isDone(); }); };
    const auto isShotDue = [&] {
        return m_cameraOptions.isByActionCommand && shots < m_options.count &&
               allAre([&](const ChannelGrab& grab) { return grab.isDone() || grab.fetched() >= shots; });
    };
    std::unique_lock lock(mutex);
    while (!areDone()) {
        if (isShotDue()) {
            ++shots;
            lock.unlock();
            cameras.shoot();
            lock.lock();
        }
        news.wait_for(lock, kLookInterval, [&] { return areDone() || isShotDue(); });
        if (console.interrupted())
            std::for_each(grabs.begin(), grabs.end(), [](ChannelGrab& grab) { grab.askToEnd(); });
        showProgress(grabs, console);
    }
    lock.unlock();
    for (ChannelGrab& grab : grabs)
        grab.join();
    console.progress("");
}

void GrabCommand::showProgress(const Grabs& grabs, Console& console) const
{
    if (!m_isShowingProgress && !console.isTerminal())
        return;
    uint64_t fetched = 0;
    uint64_t wanted = 0;
    for (const ChannelGrab& grab : grabs) {
        fetched += grab.fetched();
        wanted += grab.isDone() ? grab.fetched() : m_options.count;
    }
    console.progress(progressText(fetched, wanted));
}

}   // namespace

std::unique_ptr<Command> makeGrabCommand()
{
    return std::make_unique<GrabCommand>();
}

}   // namespace orvo::aikctl
