#include "aikctl/adapter/Adapter.h"

#include <array>
#include <filesystem>
#include <stdexcept>

#include "os/InstallationDirectory.h"
#include "os/Os.h"

namespace orvo::aikctl {

namespace {

namespace fs = std::filesystem;

constexpr const char* kEndOfChannels = "index is not valid";

std::string absolutePath(const std::string& path)
{
    return fs::weakly_canonical(fs::absolute(path)).make_preferred().string();
}

/// A library that the system loads together with the adapter, from beside it or from where it looks for any
/// library. It stays loaded, so that the adapter finds it by its name.
void requireNeighbour(const std::string& name, const std::string& adapterPath)
{
    const std::string file = name + os::kLibraryEnding;
    const std::string beside = fs::path(adapterPath).replace_filename(file).string();
    const bool isBeside = fs::is_regular_file(beside);
    os::Error error;
    if (isBeside ? os::loadLibrary(beside, os::Neighbours::BesideTheLibrary, &error) : os::loadLibrary(file))
        return;
    if (!isBeside)
        throw std::runtime_error(file +
                                 " is missing, without which the adapter can't be loaded: looked for " +
                                 beside + ", and where the system looks");
    throw std::runtime_error(
        beside + " can't be loaded, nor the adapter without it; perhaps a library that " +
        "it needs is missing beside it: " + error.text + " (" + std::to_string(error.number) + ")");
}

void requireLibraries(const std::string& adapterPath)
{
    if (!fs::is_regular_file(adapterPath))
        throw std::runtime_error("The adapter is missing: looked for " + adapterPath);

    const std::string library = std::string("brdlib5") + os::kLibraryEnding;
    const auto installation = os::installationServing(adapterPath);
    if (!installation)
        throw std::runtime_error("Don't know where to look for " + library + ": the adapter " + adapterPath +
                                 " lies below no folder named bin, dll, Hardware Applets, lib or lib64, and "
                                 "neither ORVODIR5_64 nor ORVODIR5 is set");
    const std::string path = *installation + os::kSeparator + "bin" + os::kSeparator + library;
    if (!fs::is_regular_file(path))
        throw std::runtime_error(library + " is missing: looked for " + path +
                                 ", below the installation directory of the adapter " + adapterPath);
    for (const char* const neighbour : {"ethlib", "orvo_genicam"})
        requireNeighbour(neighbour, adapterPath);
}

os::Module load(const std::string& path)
{
    os::Error error;
    os::Module library = os::loadLibrary(path, os::Neighbours::BesideTheLibrary, &error);
    if (!library)
        throw std::runtime_error("The adapter can't be loaded: " + path + ": " + error.text + " (" +
                                 std::to_string(error.number) + ")");
    return library;
}

Exports findExports(os::Module library, const std::string& path)
{
    const auto find = [&](const char* name) {
        os::Symbol function = os::findSymbol(library, name);
        if (!function)
            throw std::runtime_error(path + " is no adapter: it doesn't export " + name);
        return function;
    };
    Exports exports;
#define AIKCTL_FIND(name, ordinal) exports.name = reinterpret_cast<AIK_##name>(find(#name));
    AIK_EXPORTS(AIKCTL_FIND)
#undef AIKCTL_FIND
    return exports;
}

}   // namespace

std::string Adapter::defaultPath()
{
    const fs::path program = os::modulePath(reinterpret_cast<const void*>(&absolutePath));
    return (program.parent_path() / "OrvoCognexAdapter").string() + os::kLibraryEnding;
}

Adapter::Adapter(const std::string& path) : m_path(absolutePath(path))
{
    requireLibraries(m_path);
    m_exports = findExports(load(m_path), m_path);
}

std::vector<Channel> Adapter::openAll() const
{
    std::vector<Channel> channels;
    try {
        for (;;) {
            auto channel = tryToOpen(static_cast<int32_t>(channels.size()));
            if (!channel)
                break;
            channels.push_back(std::move(*channel));
        }
    } catch (const AdapterFailure&) {
        if (channels.empty())
            shutDown();
        throw;
    }
    if (channels.empty())
        shutDown();
    return channels;
}

Channel Adapter::open(int32_t index) const
{
    try {
        if (auto channel = tryToOpen(index)) {
            if (!channel->failure().empty())
                throw std::runtime_error("Channel " + std::to_string(index) + ": " + channel->failure());
            return std::move(*channel);
        }
    } catch (const AdapterFailure&) {
        shutDown();
        throw;
    }
    shutDown();
    throw std::runtime_error("There is no channel " + std::to_string(index));
}

std::optional<Channel> Adapter::tryToOpen(int32_t index) const
{
    csAIK_ChannelRecord record{};
    record.size = sizeof(record);
    std::string failure;
    try {
        call(m_exports.GetVideoChannel, index, &record);
    } catch (const AdapterFailure& refusal) {
        failure = refusal.what();
    }
    if (record.channelID != 0)   // open, even if a later step of the call failed
        return Channel(m_exports, index, record, failure);
    if (failure != kEndOfChannels)
        throw AdapterFailure(failure);
    return std::nullopt;
}

// With no channel open, a release fails but closes the boards all the same.
void Adapter::shutDown() const
{
    std::array<char, AIK_ERRSTR_SIZE> expected{};
    m_exports.ReleaseVideoChannel(expected.data(), 0);
}

}   // namespace orvo::aikctl
