#include "channels/BoardContainer.h"

#include "AIKException.h"
#include "acquisition/AcquisitionEngine.h"
#include "brdlib/AppletLoader.h"
#include "brdlib/AppletProcess.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "brdlib/BrdConfigurator.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"
#include "camera/CameraConnector.h"
#include "channels/CameraFamilies.h"
#include "channels/VideoChannel.h"
#include "features/BasicFeatures.h"
#include "features/FeatureContainer.h"
#include "features/NumberText.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

namespace {

using tools::logging::kCaught;
using tools::logging::recordFailure;

constexpr int32_t kBoardLimit = 8;
constexpr uint64_t kInterfaceNumber = 1'049'384;
constexpr const char* kAdapterVersion = ORVO_ADAPTER_VERSION;   // set by CMake

// Never made available: a host finds the two in the list and reads their attributes, but not their values.
constexpr Access kListed{.readable = true, .writeable = false, .available = false};

std::shared_ptr<VideoChannel> makeChannel(const std::shared_ptr<BoardWrapper>& board,
                                          const std::shared_ptr<AppletProcess>& process,
                                          const std::shared_ptr<DmaPort>& dma, const std::string& name,
                                          const std::shared_ptr<CameraConnector>& connector)
{
    auto engine = std::make_shared<AcquisitionEngine>();
    engine->setDmaPort(dma);
    auto configurator = std::make_shared<BrdConfigurator>();
    configurator->setDmaPort(dma);

    auto channel = std::make_shared<AikVideoChannel>();
    channel->setDmaPort(dma);
    channel->setAppletProcess(process);
    channel->setBoard(board);
    channel->setName(name);
    channel->setCameraConnector(connector);
    channel->setConfigurator(configurator);
    channel->setAcquisitionEngine(engine);
    dma->setObserver(engine.get());   // now that the channel detaches it, also when the rest fails

    // The order decides between equal names, of which the later wins, and the numbers that the host sees.
    const auto features = channel->features().lock();
    features->merge(process->features());
    features->merge(configurator->features());
    features->merge(dma->getFeatures());
    features->merge(engine->getFeatures());
    features->merge(connector->features());
    return channel;
}

}   // namespace

BoardContainer::BoardContainer()
{
    Brd_InitLibraries(nullptr);
}

BoardContainer::~BoardContainer()
{
    for (auto& board : m_boards)
        board.reset();   // in order, and all of them before the library
    Brd_FreeLibraries();
}

BoardContainer::Channels BoardContainer::channels()
{
    m_boards.reserve(kBoardLimit);   // so that a board whose channels are made is kept, whatever fails
    Channels channels;
    for (int32_t index = 0; index < kBoardLimit; ++index) {
        const int32_t type = Brd_getBoardType(index);
        if (type < 0)
            continue;   // gaps are allowed
        std::shared_ptr<BoardWrapper> board;
        try {
            board = BoardWrapper::create(index);
            openBoard(board, channels);
            m_boards.push_back(board);
        } catch (const std::exception& failure) {
            channels.push_back(failedChannel("Invalid Board " + toText(int64_t{type}), failure, board));
        }
    }
    addAdapterFeatures(channels);
    return channels;
}

void BoardContainer::openBoard(const std::shared_ptr<BoardWrapper>& board, Channels& channels)
{
    try {
        const auto loader = chooseLoader(board);
        if (!loader)
            throw AIKException("No applet loader accepts the file of " + appletVariable(*board));
        board->setApplet(loader->load());
        board->initialize();
        const Channels ofBoard = channelsOf(board);
        if (ofBoard.empty())
            throw AIKException("No dma channes were found");
        channels.insert(channels.end(), ofBoard.begin(), ofBoard.end());
    } catch (const std::exception& failure) {
        channels.push_back(failedChannel(board->boardName() + ": Invalid Applet ", failure, board));
    }
}

BoardContainer::Channels BoardContainer::channelsOf(const std::shared_ptr<BoardWrapper>& board)
{
    Channels channels;
    const std::string boardName = board->boardName();
    const std::shared_ptr<CameraConnector> connector = createCameraConnector(board, board->applet());
    int64_t processPosition = 0;
    for (const auto& process : board->applet()->processes()) {
        const std::string processName = boardName + " process: " + toText(processPosition++);
        for (int64_t position = 0; position < int64_t{process->dmaCount()}; ++position) {
            const auto dma = process->dmaPortAt(static_cast<int32_t>(position)).lock();
            if (dma)   // ports that failed have closed up: there is none at the last positions then
                channels.push_back(
                    makeChannel(board, process, dma, processName + " dma: " + toText(position), connector));
        }
    }
    return channels;
}

void BoardContainer::addAdapterFeatures(const Channels& channels)
{
    const auto features = std::make_shared<FeatureContainer>();
    addFeature<StringFeature>(
        *features, "CogAdapterInterfaceID",
        "This feature returns the ID of the aik.hinterface file used when the adapter was build.", kListed)
        ->setValue(toText(kInterfaceNumber));
    addFeature<StringFeature>(*features, "CogAdapterVersion", "The version of the adapter DLL.", kListed)
        ->setValue(kAdapterVersion);
    for (const auto& channel : channels)
        if (dynamic_cast<AikVideoChannel*>(channel.get()))
            channel->features().lock()->merge(features);
}

std::shared_ptr<VideoChannel> BoardContainer::failedChannel(const std::string& name,
                                                            const std::exception& failure,
                                                            const std::shared_ptr<BoardWrapper>& board)
{
    auto channel = std::make_shared<FailedVideoChannel>();
    channel->setName(name);
    channel->setFailureText(failure.what());
    channel->setBoard(board);
    recordFailure(logger(), kCaught, [&](std::ostream& text) { text << failure.what(); });
    return channel;
}

}   // namespace orvo::cognex
