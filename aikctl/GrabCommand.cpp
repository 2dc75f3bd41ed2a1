#include "aikctl/GrabCommand.h"

#include <algorithm>
#include <charconv>
#include <condition_variable>
#include <iomanip>
#include <mutex>
#include <ostream>
#include <set>
#include <sstream>

#include <CLI/CLI.hpp>

#include "aikctl/Adapter.h"
#include "aikctl/Console.h"
#include "aikctl/GrabReport.h"
#include "aikctl/releaseAll.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;

constexpr auto kLookInterval = 100ms;   // between two looks at progress and Ctrl-C

constexpr const char* kAllChannels = "all";

std::string checkChannel(const std::string& text)
{
    int32_t number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && number >= 0;
    return isNumber || text == kAllChannels ? ""
                                            : text + " is neither a channel's number nor " + kAllChannels;
}

std::string checkSetting(const std::string& text)
{
    const size_t sign = text.find('=');
    return sign == 0 || sign == std::string::npos ? text + " is no NAME=VALUE" : "";
}

std::string progressText(uint64_t fetched, uint64_t wanted)
{
    constexpr uint64_t kWidth = 40;
    const uint64_t filled = wanted == 0 ? 0 : kWidth * fetched / wanted;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
           std::to_string(fetched) + " of " + std::to_string(wanted) + " pictures";
}

}   // namespace

CLI::App* GrabCommand::declare(CLI::App& program)
{
    CLI::App* const grab = program.add_subcommand("grab", "Grabs pictures and saves them as files");
    grab->add_option("CHANNEL", m_channels, "Numbers as `list` shows them, or all")
        ->check(checkChannel)
        ->capture_default_str();
    grab->add_option("-n,--count", m_options.count, "Pictures from each channel")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    grab->add_option("-o,--output", m_folder, "The folder for the pictures; made if it isn't there")
        ->type_name("FOLDER")
        ->capture_default_str();
    grab->add_flag("--overwrite", m_isOverwriting, "Let the folder hold pictures of an earlier grab");
    grab->add_option("-s,--strategy", m_options.strategy,
                     "What happens to pictures that come faster than they are saved; without it, what the "
                     "adapter does by itself")
        ->transform(CLI::IsMember({"NewestOnly", "OldestFirst", "OldestFirstOverwrite"}, CLI::ignore_case));
    grab->add_flag("--planar", m_options.isPlanar, "Have the adapter split the colours into planes");
    grab->add_flag("--raw", m_options.isRaw,
                   "Save the bytes as they come, 16-bit samples whole, and no PNG of 8 bits a sample");
    CLI::Option* const noCamera =
        grab->add_flag("--no-camera", m_cameraOptions.areLeftAlone,
                       "Leave the cameras alone, rather than connect and start them");
    grab->add_option("--set", m_cameraOptions.settings,
                     "A parameter for each camera before it starts, such as ExposureTime=5000; any number")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(checkSetting)
        ->excludes(noCamera);
    grab->add_flag("--action", m_cameraOptions.isByActionCommand,
                   "Take each picture by one action command, in all GigE Vision cameras of a board at once")
        ->excludes(noCamera);
    grab->add_option("-t,--timeout", m_timeoutSeconds, "Longest wait for one picture, in seconds")
        ->check(CLI::Range(0.001, 86'400.0))
        ->capture_default_str();
    grab->add_flag("--progress", m_isShowingProgress,
                   "Show progress also where standard error is no terminal");
    return grab;
}

void GrabCommand::run(const Adapter& adapter, const CommonOptions& common, Console& console)
{
    m_options.timeout = std::chrono::duration<double>(m_timeoutSeconds);
    m_options.isTimed = m_cameraOptions.isByActionCommand;
    const PictureFolder folder(m_folder, m_isOverwriting);
    std::vector<Channel> channels = adapter.openAll();

    Grabs grabs;
    choose(channels, folder, grabs);
    for (ChannelGrab& grab : grabs)
        grab.prepare();
    GrabCameras cameras(m_cameraOptions, console);
    for (const ChannelGrab& grab : grabs)
        cameras.connect(grab.channel());
    for (ChannelGrab& grab : grabs)   // before the cameras: no picture shall be lost
        grab.start();
    cameras.start();
    fetch(grabs, cameras, console);
    cameras.stop();
    for (ChannelGrab& grab : grabs)
        grab.stop();
    cameras.close();

    for (const ChannelGrab& grab : grabs) {
        const std::string channel = "channel " + std::to_string(grab.channel().index()) + ": ";
        if (!grab.result().note.empty())
            console.note(channel + grab.result().note);
        if (!grab.result().failure.empty())
            console.fail(channel + grab.result().failure);
    }
    releaseAll(channels, console);
    const GrabReport report(grabs, folder, console.interrupted());
    if (common.json)
        report.printJson(console.out());
    else
        report.printTable(console.out());
}

void GrabCommand::choose(std::vector<Channel>& channels, const PictureFolder& folder, Grabs& grabs) const
{
    if (channels.empty())
        throw std::runtime_error("There is no channel: the adapter found no board");
    std::set<size_t> chosen;
    for (const std::string& text : m_channels) {
        if (text == kAllChannels) {
            for (size_t index = 0; index < channels.size(); ++index)
                chosen.insert(index);
        } else if (std::stoul(text) < channels.size()) {
            chosen.insert(std::stoul(text));
        } else {
            throw std::runtime_error("There is no channel " + text + ": the last one is " +
                                     std::to_string(channels.size() - 1));
        }
    }
    for (const size_t index : chosen)
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

    uint64_t shots = 0;   // for which an action command was sent
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

}   // namespace orvo::aikctl
