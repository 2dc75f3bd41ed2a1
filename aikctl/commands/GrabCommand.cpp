#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
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
#include "aikctl/grab/PictureIndex.h"
#include "aikctl/pictures/PictureFolder.h"
#include "os/PathText.h"

namespace orvo::aikctl {

namespace {

constexpr uint64_t kMostPictures = 1'000'000'000;
constexpr const char* kStandardOutput = "-";   // as a folder's name
constexpr uint64_t kMostJobs = 256;
constexpr uint64_t kLongestGrabSeconds = 10'000'000;
constexpr uint64_t kMostBuffers = 1'000'000;

/// `grab`: pictures from chosen channels into files, all channels at the same time, and a report.
class GrabCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    /// Where pictures go, and that place for people.
    struct Output {
        PictureSaver::Target target{};
        std::string place{};
    };

    void refuseWhatHasNoEffect(const CLI::App& self) const;
    std::vector<aik::Channel*> choose(std::vector<aik::Channel>& channels) const;
    Output toFolder() const;
    Output toStream(Console& console);

    SessionOptions m_options;
    double m_timeoutSeconds = 5;
    bool m_isIndexed = false;
    ChannelsChoice m_channels;
    FileOptions m_fileOptions;
};

void GrabCommand::declare(CLI::App& self)
{
    m_options.jobs = std::max(1U, std::thread::hardware_concurrency());
    declareChannels(self, m_channels);
    CLI::Option* const count =
        self.add_option("-n,--count", m_options.grab.count,
                        "Pictures from each channel; without it, --seconds alone counts")
            ->check(wholeNumber(1, kMostPictures))
            ->capture_default_str();
    self.add_option_function<double>(
            "--seconds",
            [this, count](double seconds) {
                m_options.grab.duration = std::chrono::duration<double>(seconds);
                if (count->empty())
                    m_options.grab.count = kMostPictures;
            },
            "How long to fetch pictures")
        ->check(secondsUpTo(kLongestGrabSeconds))
        ->type_name("S");
    declareFileOptions(self, m_fileOptions);
    self.add_option("-j,--jobs", m_options.jobs, "Threads that encode and write pictures")
        ->check(wholeNumber(1, kMostJobs))
        ->type_name("N")
        ->default_str("one for each core");
    CLI::Option* const discard =
        self.add_flag("--discard", m_options.grab.isWatched,
                      "Save nothing; show each second what came, and at the end the intervals");
    self.add_flag("--index", m_isIndexed, "Write a table of the pictures, index.csv, into the folder")
        ->excludes(discard);
    self.add_option("--buffers", m_options.grab.buffers,
                    "The size of the ring; without it, the adapter's own default")
        ->check(wholeNumber(1, kMostBuffers))
        ->type_name("N");
    self.add_option("-s,--strategy", m_options.grab.strategy,
                    "What happens when pictures come faster than they are saved; without it, the adapter's "
                    "own default")
        ->transform(CLI::IsMember({"NewestOnly", "OldestFirst", "OldestFirstOverwrite"}, CLI::ignore_case));
    self.add_flag("--planar", m_options.grab.isPlanar, "Have the adapter split the colours into planes");
    declareCameraOptions(self, m_options.cameras);
    self.add_option("-t,--timeout", m_timeoutSeconds, "The longest wait for one picture, in seconds")
        ->check(secondsUpTo(kLongestWaitSeconds))
        ->capture_default_str();
    self.add_flag("--fail-on-loss", m_options.isFailingOnLoss,
                  "Fail if a picture was skipped by the strategy, or lost on its way to the adapter");
    self.add_flag("--progress", m_options.isAlwaysShowingProgress,
                  "Show progress even if standard error is no terminal");
    for (const char* const option : {"--output", "--overwrite", "--format", "--raw", "--compression"})
        discard->excludes(option);
    self.parse_complete_callback([this, &self] { refuseWhatHasNoEffect(self); });
}

void GrabCommand::refuseWhatHasNoEffect(const CLI::App& self) const
{
    const bool isPiped = m_fileOptions.folder == kStandardOutput;
    const FileFormat format = m_fileOptions.encoding.format;
    const struct {
        const char* option;
        bool isWrong;
        const char* complaint;
    } rows[] = {
        {"--index", isPiped, "standard output has no table of the pictures"},
        {"--overwrite", isPiped, "standard output has no older pictures"},
        {"--format", isPiped && format != FileFormat::Raw, "standard output takes raw pictures alone"},
        {"--compression", isPiped || format != FileFormat::Png, "PNG files alone can be compressed"},
    };
    for (const auto& row : rows)
        if (row.isWrong && self.count(row.option) > 0)
            throw CLI::ValidationError(row.option, row.complaint);
}

void GrabCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    m_options.grab.timeout = std::chrono::duration<double>(m_timeoutSeconds);
    m_options.encoding = m_fileOptions.encoding;
    m_options.isShowingSeconds = !common.json;
    Output output;
    if (m_fileOptions.folder == kStandardOutput)
        output = toStream(console);
    else if (!m_options.grab.isWatched)
        output = toFolder();
    std::vector<aik::Channel> channels = adapter.openAll();
    const std::vector<aik::Channel*> chosen = choose(channels);
    if (m_fileOptions.folder == kStandardOutput && chosen.size() > 1)
        throw std::runtime_error("Standard output takes the pictures of one channel, not of several");
    GrabSession session(chosen, m_options, console);
    session.run(output.target);
    releaseAll(channels, console);
    const GrabReport report(session, output.place, console.interrupted());
    if (common.json)
        console.print(report.toJson());
    else
        report.printTable(console.out());
}

GrabCommand::Output GrabCommand::toFolder() const
{
    const auto folder = std::make_shared<PictureFolder>(m_fileOptions.folder, m_fileOptions.isOverwriting);
    const auto save = [folder](const QueuedPicture& picture, const PictureFile& file) {
        return folder->save(picture.saved->channel, picture.number, file.ending, file.bytes);
    };
    Output output{{.save = save, .begin = [folder] { folder->begin(); }}, os::textOf(folder->path())};
    if (m_isIndexed) {
        const auto index = std::make_shared<PictureIndex>(folder->indexPath());
        output.target.begin = [folder, index] {
            folder->begin();
            index->open();
        };
        output.target.record = [index](const std::string& name, const QueuedPicture& picture) {
            index->add(name, picture);
        };
    }
    return output;
}

/// One job, so that the pictures come in their order.
GrabCommand::Output GrabCommand::toStream(Console& console)
{
    m_options.encoding.format = FileFormat::Raw;
    m_options.jobs = 1;
    const auto write = [&out = console.takeOutForData()](const QueuedPicture&, const PictureFile& file) {
        const auto size = static_cast<std::streamsize>(file.bytes.size());
        errno = 0;
        if (!out.write(reinterpret_cast<const char*>(file.bytes.data()), size).flush())
            throw std::runtime_error("Can't write to standard output: " +
                                     std::generic_category().message(errno == 0 ? EIO : errno));
        return std::string();
    };
    return {{.save = write}, "standard output"};
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
