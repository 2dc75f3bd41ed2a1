#include "bench/harness/Adapter.h"

#include <array>
#include <stdexcept>

#include "bench/board/BenchBoard.h"
#include "bench/harness/Machine.h"
#include "os/Program.h"

namespace orvo::bench {

namespace {

std::string programFolder()
{
    const std::string path = os::modulePath(reinterpret_cast<const void*>(&programFolder));
    return path.substr(0, path.find_last_of(os::kSeparator));
}

/// Not zeroed as a whole: that would be a good part of what a bench measures.
struct Errstr {
    Errstr() { text[0] = '\0'; }

    std::array<char, AIK_ERRSTR_SIZE> text;

    void check(int32_t code) const { bench::check(code, text.data()); }
};

}   // namespace

Adapter::Adapter(const std::string& folder) : m_folder(programFolder() + os::kSeparator + folder)
{
    // Any file will do for the bench's board, as long as its name says what kind it is.
    os::setEnvironmentVariable("ORVO_COGNEX_APPLET_0", programFolder() + os::kSeparator + "bench.hap");
    countAllocationsOf(load("OrvoCognexAdapter"));
#define ORVO_FIND(name, ordinal) name = find<AIK_##name>("OrvoCognexAdapter", #name);
    AIK_EXPORTS(ORVO_FIND)
#undef ORVO_FIND
}

os::Module Adapter::load(const std::string& library) const
{
    const std::string path = m_folder + os::kSeparator + library + os::kLibraryEnding;
    os::Error error;
    os::Module module = os::loadLibrary(path, os::Neighbours::BesideTheLibrary, &error);
    if (!module)
        throw std::runtime_error("Cannot load " + path + ": " + error.text);
    return module;
}

os::Symbol Adapter::symbol(const std::string& library, const char* name) const
{
    os::Symbol found = os::findSymbol(load(library), name);
    if (!found)
        throw std::runtime_error(library + " has no " + name);
    return found;
}

void check(int32_t code, const char* errstr)
{
    if (code != AIK_OK)
        throw std::runtime_error(errstr);
}

std::vector<int64_t> openChannels(const Adapter& adapter, uint32_t count)
{
    adapter.find<SetDmaCountFunction>("brdlib5", "BenchBoard_setDmaCount")(count);
    std::vector<int64_t> ids;
    for (uint32_t index = 0; index < count; ++index) {
        Errstr errstr;
        csAIK_ChannelRecord record{};
        record.size = sizeof record;
        errstr.check(adapter.GetVideoChannel(errstr.text.data(), static_cast<int32_t>(index), &record));
        if (record.failed)
            throw std::runtime_error(std::string("Not usable: ") + record.name);
        ids.push_back(record.channelID);
    }
    return ids;
}

void closeChannels(const Adapter& adapter, const std::vector<int64_t>& ids)
{
    for (const int64_t id : ids) {
        Errstr errstr;
        errstr.check(adapter.ReleaseVideoChannel(errstr.text.data(), id));
    }
}

RunningChannels::RunningChannels(const Adapter& adapter, uint32_t count, uint32_t side, const char* strategy)
    : m_adapter(adapter),
      m_deliver(adapter.find<DeliverFunction>("brdlib5", "BenchBoard_deliver")),
      m_ids(openChannels(adapter, count))
{
    Errstr errstr;
    csAIK_CommonParams params{};
    params.width = side;
    params.height = side;
    for (const int64_t id : m_ids) {
        errstr.check(adapter.WriteValue(errstr.text.data(), id, "AcquisitionStrategy", strategy));
        errstr.check(adapter.SetupCommonParams(errstr.text.data(), id, &params));
    }
    errstr.check(adapter.StartAcquisition(errstr.text.data(), id(0)));   // all are of one process
}

RunningChannels::~RunningChannels()
{
    try {
        closeChannels(m_adapter, m_ids);   // the last one stops the board
    } catch (const std::exception&) {      // the failure that ends the program is the earlier one
    }
}

void RunningChannels::fetch(uint32_t channel, void* destination) const
{
    Errstr errstr;
    uint32_t result = AIK_ACQ_PENDING;
    while (result == AIK_ACQ_PENDING)
        errstr.check(m_adapter.GetImage(errstr.text.data(), id(channel), destination, &result));
}

void RunningChannels::wait(uint32_t channel) const
{
    Errstr errstr;
    uint32_t result = AIK_ACQ_PENDING;
    while (result == AIK_ACQ_PENDING)
        errstr.check(m_adapter.WaitForIntegration(errstr.text.data(), id(channel), &result));
}

void RunningChannels::attributes(uint32_t channel) const
{
    Errstr errstr;
    uint32_t result = AIK_ACQ_PENDING;
    csAIK_ImageAttributes record{};
    record.size = sizeof record;
    errstr.check(m_adapter.GetImageAttributes(errstr.text.data(), id(channel), &record, &result));
}

}   // namespace orvo::bench
