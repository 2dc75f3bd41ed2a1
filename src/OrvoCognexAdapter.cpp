// The fifteen exports. Each is its checks and its one dispatch, inside the common frame.

#include "aik/aik.h"

#include "CallFrame.h"
#include "acquisition/AcquisitionEngine.h"
#include "acquisition/buffers/Buffer.h"
#include "brdlib/AppletProcess.h"
#include "brdlib/BoardFormats.h"
#include "brdlib/BoardWrapper.h"
#include "brdlib/DmaPort.h"
#include "channels/ChannelTable.h"
#include "channels/VideoChannel.h"
#include "features/FeatureContainer.h"

using namespace orvo::cognex;

namespace {

constexpr int32_t kRecordSizeWithoutFeatureCalls = 0x260;
constexpr int32_t kRecordSizeWithoutTimestamp = 0x2C;
constexpr size_t kTextLimit = 256;

std::shared_ptr<VideoChannel> locked(const std::weak_ptr<VideoChannel>& channel)
{
    // It can only have gone with the table, during the call, which the host must not do.
    return lockedOrThrow(channel, "Invalid channelID");
}

/// The open channel of that id, kept for the duration of the call.
std::shared_ptr<VideoChannel> openChannel(int64_t channelID)
{
    return locked(ChannelTable::instance().openChannel(channelID));
}

// What a channel owns lives as long as the channel, which the caller keeps.
std::shared_ptr<AcquisitionEngine> engineOf(const VideoChannel& channel)
{
    return channel.acquisitionEngine().lock();
}

std::shared_ptr<FeatureContainer> featuresOf(const VideoChannel& channel)
{
    return channel.features().lock();
}

/// At most 256 bytes, and the NUL where the whole text would end.
void copyTextThenNul(char* destination, const std::string& text)
{
    text.copy(destination, kTextLimit);
    destination[text.size()] = '\0';
}

/// At most 256 bytes and no NUL: the host zeroes its buffer.
void copyTextAlone(char* destination, const std::string& text)
{
    text.copy(destination, kTextLimit);
}

void storeFunctions(csAIK_ChannelRecord& record)
{
    record.setupCommonParams = SetupCommonParams;
    record.getImageAttributes = GetImageAttributes;
    record.getImage = GetImage;
    record.startAcquisition = StartAcquisition;
    record.stopAcquisition = StopAcquisition;
    record.executeCommand = ExecuteCommand;
    record.readValue = ReadValue;
    record.writeValue = WriteValue;
    if (record.size > kRecordSizeWithoutFeatureCalls) {
        record.getFeatureName = GetFeatureName;
        record.getFeatureType = GetFeatureType;
        record.getValidEnum = GetValidEnum;
        record.getFeatureAttr = GetFeatureAttr;
        record.releaseVideoChannel = ReleaseVideoChannel;
    }
}

std::string boardTextOf(const VideoChannel& channel)
{
    const auto board = channel.board().lock();
    return board ? board->boardText() : std::string();
}

/// Opens the channel and fills the record step by step: what has been stored stays if a later step fails.
void openInto(csAIK_ChannelRecord& record, int32_t index)
{
    ChannelTable& table = ChannelTable::instance();
    const auto channel = locked(table.channelAt(index));
    const int64_t id = table.idAt(index);
    record.channelID = id;
    table.open(id);
    record.failed = dynamic_cast<FailedVideoChannel*>(channel.get()) ? 1 : 0;
    storeFunctions(record);
    const bool isValid = channel->isValid();
    record.width = isValid ? static_cast<int32_t>(locked(channel->dmaPort())->width()) : 0;
    record.height = isValid ? static_cast<int32_t>(locked(channel->dmaPort())->height()) : 0;
    copyBounded(record.name, channel->name());
    copyBounded(record.boardText, boardTextOf(*channel));
}

/// A refused offset is no failure: the applet goes on with the one that it has.
void setOffsets(DmaPort& port, const csAIK_CommonParams& params)
{
    try {
        port.setXOffset(params.xOffset);
        port.setYOffset(params.yOffset);
    } catch (const std::exception& failure) {
        if (LogWrap* const log = LogWrap::instance())
            recordFailure(log->logger(), orvo::tools::logging::kTolerated,
                          [&](std::ostream& text) { text << "Cannot set image offset: " << failure.what(); });
    }
}

void readOffsets(const DmaPort& port, csAIK_ImageAttributes& attributes)
{
    try {
        attributes.xOffset = port.xOffset();
        attributes.yOffset = port.yOffset();
    } catch (...) {   // a board without offsets, whatever way it says so, has the offset 0
        attributes.xOffset = 0;
        attributes.yOffset = 0;
    }
}

/// The end of a release, also of one that fails: while nothing is open, everything goes.
class ShutDownIfNothingIsOpen {
public:
    ShutDownIfNothingIsOpen() = default;
    ShutDownIfNothingIsOpen(const ShutDownIfNothingIsOpen&) = delete;
    ShutDownIfNothingIsOpen& operator=(const ShutDownIfNothingIsOpen&) = delete;
    ~ShutDownIfNothingIsOpen()
    {
        try {
            if (ChannelTable::instance().openCount() > 0)
                return;
        } catch (const std::exception&) {   // no memory for an empty table: there is none, then
        }
        ChannelTable::destroyInstance();
        LogWrap::destroyInstance();
    }
};

}   // namespace

int32_t GetVideoChannel(char* errstr, int32_t index, csAIK_ChannelRecord* channel)
{
    LogWrap::createInstance();
    return callFrame({"GetVideoChannel", errstr}, [&] {
        if (!channel)
            throw std::runtime_error("Video channel pointer is invalid");
        if (!ChannelTable::exists())
            ChannelTable::instance().populate();
        openInto(*channel, index);
    });
}

int32_t SetupCommonParams(char* errstr, int64_t channelID, const csAIK_CommonParams* params)
{
    return callFrame({"SetupCommonParams", errstr}, [&] {
        require(params, "csAIK_CommonParams is an invalid pointer");
        const auto channel = openChannel(channelID);
        const auto port = locked(channel->dmaPort());
        const auto process = locked(channel->appletProcess());
        port->setWidth(params->width);
        port->setHeight(params->height);
        setOffsets(*port, *params);
        process->setupAll();
    });
}

int32_t ReleaseVideoChannel(char* errstr, int64_t channelID)
{
    const ShutDownIfNothingIsOpen atTheEnd;
    return callFrame({"ReleaseVideoChannel", errstr}, [&] {
        ChannelTable& table = ChannelTable::instance();
        table.openChannel(channelID);
        table.close(channelID);
    });
}

int32_t GetImage(char* errstr, int64_t channelID, void* image, uint32_t* acqResult)
{
    return callFrame({"GetImage", errstr, acqResult}, [&] {
        require(acqResult, "acqResult is an invalid Pointer");
        *acqResult = AIK_ACQ_COMPLETED;
        const auto channel = openChannel(channelID);
        engineOf(*channel)->getImage(image);
    });
}

int32_t WaitForIntegration(char* errstr, int64_t channelID, uint32_t* acqResult)
{
    return callFrame({"WaitForIntegration", errstr, acqResult}, [&] {
        require(acqResult, "acqResult is an invalid Pointer");
        *acqResult = AIK_ACQ_COMPLETED;
        const auto channel = openChannel(channelID);
        if (!locked(channel->dmaPort())->isRunning())
            throw AIKException("Acquisition is not running");
        engineOf(*channel)->waitForIntegration();
    });
}

int32_t GetImageAttributes(char* errstr, int64_t channelID, csAIK_ImageAttributes* attributes,
                           uint32_t* acqResult)
{
    return callFrame({"GetImageAttributes", errstr, acqResult}, [&] {
        require(acqResult, "acqResult is an invalid Pointer");
        *acqResult = AIK_ACQ_COMPLETED;
        require(attributes, "csAIK_ImageAttributes pointer is not valid");
        const auto channel = openChannel(channelID);
        const auto port = locked(channel->dmaPort());
        const auto engine = engineOf(*channel);
        const std::weak_ptr<Buffer> image = engine->peekImage();
        if (!engine->hasFreeBuffers())
            throw AIKException("Acquisistion is not setup");
        attributes->width = port->width();
        attributes->height = port->height();
        attributes->widthAgain = port->width();
        const bool planar = engine->isPlanar();
        const BoardFormat& format = boardFormat(port->format());
        attributes->pixelFormat = planar ? format.planarCode : format.packedCode;
        attributes->imageWidth = port->width();
        attributes->imageHeight = port->height();
        readOffsets(*port, *attributes);
        attributes->imageXOffset = attributes->xOffset;
        attributes->imageYOffset = attributes->yOffset;
        if (attributes->size > kRecordSizeWithoutTimestamp)
            attributes->timestamp = locked(image)->timestamp();   // kept no longer: its ring may be rebuilt
    });
}

int32_t StartAcquisition(char* errstr, int64_t channelID)
{
    return callFrame({"StartAcquisition", errstr}, [&] {
        const auto channel = openChannel(channelID);
        locked(channel->appletProcess())->start();
    });
}

int32_t StopAcquisition(char* errstr, int64_t channelID)
{
    return callFrame({"StopAcquisition", errstr}, [&] {
        const auto channel = openChannel(channelID);
        locked(channel->appletProcess())->stop();
    });
}

int32_t ExecuteCommand(char* errstr, int64_t channelID, const char* feature)
{
    return callFrame({"ExecuteCommand", errstr}, [&] {
        require(feature, "Feature name is an invalid ptr");
        const auto channel = openChannel(channelID);
        featuresOf(*channel)->execute(feature);
    });
}

int32_t ReadValue(char* errstr, int64_t channelID, const char* feature, char* value)
{
    return callFrame({"ReadValue", errstr}, [&] {
        require(feature, "Feature name is an invalid ptr");
        const auto channel = openChannel(channelID);
        featuresOf(*channel)->read(feature, value);
    });
}

int32_t WriteValue(char* errstr, int64_t channelID, const char* feature, const char* value)
{
    return callFrame({"WriteValue", errstr}, [&] {
        require(feature, "Feature name is an invalid ptr");
        require(value, "Value ptr is invalid");
        const auto channel = openChannel(channelID);
        featuresOf(*channel)->write(feature, value);
    });
}

int32_t GetFeatureName(char* errstr, int64_t channelID, uint32_t index, char* name)
{
    return callFrame({"GetFeatureName", errstr}, [&] {
        require(name, "Feature name is an invalid ptr");
        const auto channel = openChannel(channelID);
        copyTextThenNul(name, featuresOf(*channel)->nameAt(index));
    });
}

int32_t GetFeatureType(char* errstr, int64_t channelID, const char* feature, uint32_t* type)
{
    return callFrame({"GetFeatureType", errstr}, [&] {
        require(feature, "Feature name is an invalid pointer");
        require(type, "Feature type is an invalid pointer");
        const auto channel = openChannel(channelID);
        *type = static_cast<uint32_t>(featuresOf(*channel)->type(feature));
    });
}

int32_t GetFeatureAttr(char* errstr, int64_t channelID, const char* feature, uint32_t attr, char* result)
{
    return callFrame({"GetFeatureAttr", errstr}, [&] {
        require(feature, "Feature name is an invalid pointer");
        require(result, "Invalid result pointer");
        const auto channel = openChannel(channelID);
        copyTextThenNul(result, featuresOf(*channel)->attribute(feature, attr));
    });
}

int32_t GetValidEnum(char* errstr, int64_t channelID, const char* feature, uint32_t index, char* value)
{
    return callFrame({"GetValidEnum", errstr}, [&] {
        require(feature, "Feature name is an invalid pointer");
        require(value, "Value pointer is invalid");
        const auto channel = openChannel(channelID);
        copyTextAlone(value, featuresOf(*channel)->validEnum(feature, index));
    });
}
