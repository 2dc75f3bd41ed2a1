#include <chrono>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/commands/CameraOptions.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/commands/FileOptions.h"
#include "aikctl/console/Console.h"
#include "aikctl/grab/GrabReport.h"
#include "aikctl/grab/GrabSession.h"

namespace orvo::aikctl {

namespace {

constexpr uint64_t kMostPictures = 1'000'000'000;

/// `grab`: pictures from chosen channels into files, all channels at the same time, and a report.
class GrabCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    std::vector<aik::Channel*> choose(std::vector<aik::Channel>& channels) const;

    SessionOptions m_options;
    double m_timeoutSeconds = 5;
    ChannelsChoice m_channels;
    FileOptions m_fileOptions;
};

void GrabCommand::declare(CLI::App& self)
{
    declareChannels(self, m_channels);
    self.add_option("-n,--count", m_options.grab.count, "Pictures from each channel")
        ->check(wholeNumber(1, kMostPictures))
        ->capture_default_str();
    declareFileOptions(self, m_fileOptions);
    self.add_option("-s,--strategy", m_options.grab.strategy,
                    "What happens when pictures come faster than they are saved; without it, the adapter's "
                    "own default")
        ->transform(CLI::IsMember({"NewestOnly", "OldestFirst", "OldestFirstOverwrite"}, CLI::ignore_case));
    self.add_flag("--planar", m_options.grab.isPlanar, "Have the adapter split the colours into planes");
    declareCameraOptions(self, m_options.cameras);
    self.add_option("-t,--timeout", m_timeoutSeconds, "The longest wait for one picture, in seconds")
        ->check(CLI::Range(0.001, 86'400.0))
        ->capture_default_str();
    self.add_flag("--fail-on-loss", m_options.isFailingOnLoss,
                  "Fail if a picture was skipped by the strategy, or lost on its way to the adapter");
    self.add_flag("--progress", m_options.isAlwaysShowingProgress,
                  "Show progress even if standard error is no terminal");
}

void GrabCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    m_options.grab.timeout = std::chrono::duration<double>(m_timeoutSeconds);
    m_options.grab.encoding = m_fileOptions.encoding;
    const PictureFolder folder(m_fileOptions.folder, m_fileOptions.isOverwriting);
    std::vector<aik::Channel> channels = adapter.openAll();
    GrabSession session(choose(channels), m_options, folder, console);
    session.run();
    releaseAll(channels, console);
    const GrabReport report(session, folder, console.interrupted());
    if (common.json)
        console.print(report.toJson());
    else
        report.printTable(console.out());
}

std::vector<aik::Channel*> GrabCommand::choose(std::vector<aik::Channel>& channels) const
{
    std::vector<aik::Channel*> result;
    for (const size_t index : chooseChannels(channels, m_channels))
        result.push_back(&channels[index]);
    return result;
}

}   // namespace

std::unique_ptr<Command> makeGrabCommand()
{
    return std::make_unique<GrabCommand>();
}

}   // namespace orvo::aikctl
