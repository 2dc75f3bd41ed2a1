#include "brdlib/DmaPort.h"

#include <limits>
#include <stdexcept>

#include "AIKException.h"
#include "acquisition/buffers/Buffer.h"
#include "brdlib/BoardFormats.h"
#include "brdlib/DmaObserver.h"
#include "brdlib/binding/BrdFunctions.h"
#include "features/FeatureContainer.h"
#include "features/NumberText.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

namespace {

using tools::logging::kCaught;
using tools::logging::recordFailure;
using tools::logging::recordTrace;
using tools::logging::SourceLine;

// Numbers that the board library publishes.
constexpr int32_t kParameterWidth = 100;
constexpr int32_t kParameterHeight = 200;
constexpr int32_t kParameterXOffset = 300;
constexpr int32_t kParameterYOffset = 400;
constexpr int32_t kParameterFormat = 700;
constexpr int32_t kParameterTimestamp = 22030;
constexpr int32_t kInformationTimestampFrequency = 100;
constexpr int32_t kStatusForTheRecord = 40;   // what the board says of its blocks, before and after
constexpr int32_t kStatusUnblock = 512;
constexpr int32_t kSelectPicture = 220;
constexpr int64_t kEndless = -1;
constexpr int32_t kBlockUntilUnblocked = 2;
constexpr int32_t kApcFlags = 32;

constexpr unsigned long long kDefaultBufferCount = 5;

// The lines are part of the records' text and stay, wherever the code moves.
constexpr SourceLine kStartLine{"brdlib/DmaPort", 191};
constexpr SourceLine kNewBufferLine{"brdlib/DmaPort", 338};
constexpr SourceLine kUnblockBufferLine{"brdlib/DmaPort", 357};

/// The bytes of a whole ring. What doesn't fit becomes the largest number, which the board refuses.
uint64_t ringBytes(uint64_t count, uint64_t size)
{
    constexpr uint64_t kMost = std::numeric_limits<uint64_t>::max();
    return size > 0 && count > kMost / size ? kMost : count * size;
}

int32_t enterCallback(int64_t pictureNumber, void* data)
{
    const auto& words = *static_cast<std::array<void*, 5>*>(data);
    static_cast<AcqCallbackObserver*>(words.back())->acquisitionCallback(pictureNumber);
    return 0;
}

unsigned long long timestampFrequency()
{
    std::array<char, 256> text{};
    auto length = static_cast<uint32_t>(text.size());
    checkBrd(Brd_getSystemInformation(nullptr, kInformationTimestampFrequency, 0, 0, text.data(), &length));
    text.back() = '\0';
    const auto frequency = parseNumber<unsigned long long>(text.data());
    if (!frequency)
        throw std::runtime_error("cannot cast string to number");
    return *frequency;
}

}   // namespace

DmaPort::DmaPort() : m_features(std::make_shared<FeatureContainer>())
{
    m_bufferCount = addFeature<NumberFeature<unsigned long long>>(
        *m_features, "BufferCount", "Number of buffers on this stream.", kReadWrite);
    m_bufferCount->setValue(kDefaultBufferCount);
    m_bufferCountObserver = observe(*m_bufferCount, [this] { setup(); });
    m_frameCount = addFeature<NumberFeature<unsigned long long>>(*m_features, "FrameCountSinceLastStart",
                                                                 "Frame counter", kReadOnly);
    try {
        addTimestampFrequency();
    } catch (...) {   // a port is of use without it, whatever kept the board from answering
    }
}

DmaPort::~DmaPort()
{
    try {
        stop();
    } catch (...) {   // a stopped port refuses too, and nobody is left to tell
    }
    try {
        freeRing();
    } catch (...) {
    }
}

uint32_t DmaPort::width() const
{
    return parameter(kParameterWidth, "Cannot get BRD_WIDTH");
}

void DmaPort::setWidth(uint32_t width)
{
    setParameter(kParameterWidth, width, "Cannot set BRD_WIDTH");
}

uint32_t DmaPort::height() const
{
    return parameter(kParameterHeight, "Cannot get BRD_HEIGHT");
}

void DmaPort::setHeight(uint32_t height)
{
    setParameter(kParameterHeight, height, "Cannot set BRD_HEIGHT");
}

uint32_t DmaPort::xOffset() const
{
    return parameter(kParameterXOffset, "Cannot get BRD_FORMAT");   // deliberate: hosts compare this text
}

void DmaPort::setXOffset(uint32_t offset)
{
    setParameter(kParameterXOffset, offset, "Cannot set BRD_XOFFSET");
}

uint32_t DmaPort::yOffset() const
{
    return parameter(kParameterYOffset, "Cannot get BRD_YOFFSET");
}

void DmaPort::setYOffset(uint32_t offset)
{
    setParameter(kParameterYOffset, offset, "Cannot set BRD_YOFFSET");
}

uint32_t DmaPort::format() const
{
    return parameter(kParameterFormat, "Cannot get BRD_FORMAT");
}

void DmaPort::setup()
{
    const bool wasRunning = isRunning();
    if (wasRunning)
        stop();
    rebuildRing();
    if (wasRunning)
        start();
}

void DmaPort::start()
{
    if (isRunning())
        return;
    if (m_ring.empty())
        throw AIKException("Acquisistion is not setup");
    m_callbackData.back() = static_cast<AcqCallbackObserver*>(this);
    BrdApcControl control{.version = 0,
                          .func = enterCallback,
                          .data = &m_callbackData,
                          .timeout = std::numeric_limits<int32_t>::max(),
                          .flags = kApcFlags};
    checkBrd(Brd_registerApcHandler(m_boardHandle, dmaArgument(), &control, 0));
    recordTrace(getLogger(), kStartLine,
                [&](std::ostream& text) { text << "start dma(" << m_dmaIndex << ")"; });
    checkBrd(Brd_AcquireEx(m_boardHandle, dmaArgument(), kEndless, kBlockUntilUnblocked, m_memoryHead));
    m_frameCount->setValue(0);
    m_running.store(true, std::memory_order_release);
}

void DmaPort::stop()
{
    if (!isRunning())
        throw AIKException("Acquisition is not running");
    const int32_t stopped = Brd_stopAcquireEx(m_boardHandle, dmaArgument(), m_memoryHead, 0);
    const int32_t removed = Brd_registerApcHandler(m_boardHandle, dmaArgument(), nullptr, 0);
    checkBrd(stopped);
    checkBrd(removed);
    m_running.store(false, std::memory_order_release);
}

void DmaPort::unblockBuffer(const Buffer& buffer)
{
    const int64_t before =
        Brd_getStatusEx(m_boardHandle, kStatusForTheRecord, 0, dmaArgument(), m_memoryHead);
    Brd_setStatusEx(m_boardHandle, kStatusUnblock,
                    buffer.number() + 1,   // the board counts buffers from 1 in this call alone
                    dmaArgument(), m_memoryHead);
    const int64_t after = Brd_getStatusEx(m_boardHandle, kStatusForTheRecord, 0, dmaArgument(), m_memoryHead);
    recordTrace(getLogger(), kUnblockBufferLine, [&](std::ostream& text) {
        text << "unblockBuffer dma(" << m_dmaIndex << "):" << buffer.number() << " _" << before << "-"
             << after;
    });
}

void DmaPort::acquisitionCallback(int64_t pictureNumber)
{
    try {
        receive(pictureNumber);
    } catch (const std::exception& failure) {
        recordFailure(getLogger(), kCaught, [&](std::ostream& text) {
            text << "Error in acquisition callback " << failure.what();
        });
    }
}

void DmaPort::receive(int64_t pictureNumber)
{
    if (pictureNumber < 0) {
        if (m_observer)
            m_observer->acquisitionError(pictureNumber);
        return;
    }
    if (!isRunning()) {
        recordFailure(getLogger(), kCaught,
                      [](std::ostream& text) { text << "Picture received despite no acquisition running"; });
        return;
    }
    const int64_t image =
        Brd_getImageEx(m_boardHandle, kSelectPicture, pictureNumber, dmaArgument(), 0, m_memoryHead);
    uint64_t stamp = 0;
    Brd_getParameterEx(m_boardHandle, kParameterTimestamp, &stamp, dmaArgument(), m_memoryHead, image);
    m_frameCount->setValue(m_frameCount->value() + 1);   // callbacks of one channel don't overlap
    void* const address = Brd_getImagePtrEx(m_boardHandle, pictureNumber, dmaArgument(), m_memoryHead);
    const auto entry = m_bufferByAddress.find(address);
    if (!address || entry == m_bufferByAddress.end())   // null is the address of a block that was never had
        throw std::runtime_error("Picture of an unknown buffer");
    const std::shared_ptr<Buffer>& buffer = entry->second;
    buffer->setTimestamp(stamp);
    recordTrace(getLogger(), kNewBufferLine, [&](std::ostream& text) {
        text << "newBuffer dma(" << m_dmaIndex << "):" << buffer->number();
    });
    if (m_observer)
        m_observer->newBuffer(buffer);
}

uint32_t DmaPort::parameter(int32_t id, const char* failure) const
{
    uint32_t value = 0;
    if (Brd_getParameter(m_boardHandle, id, &value, dmaArgument()) != 0)
        throw std::runtime_error(failure);
    return value;
}

void DmaPort::setParameter(int32_t id, uint32_t value, const char* failure)
{
    if (Brd_setParameter(m_boardHandle, id, &value, dmaArgument()) != 0)
        throw std::runtime_error(failure);
}

void DmaPort::addTimestampFrequency()
{
    const unsigned long long frequency = timestampFrequency();
    addFeature<NumberFeature<unsigned long long>>(
        *m_features, "TimestampFrequency",
        "This is the frequency of the timestamps that are assigned to every image.", kReadOnly)
        ->setValue(frequency);
}

void DmaPort::rebuildRing()
{
    // First of all: a failure below must not leave buffers of the old geometry. The observer hears of it only
    // after that, so that none of them can become current again.
    m_ring.clear();
    m_bufferByAddress.clear();
    if (m_observer)
        m_observer->buffersGone();
    const uint64_t bytes = boardFormat(format()).bytesPerPixel;
    const uint32_t imageWidth = width();
    const uint32_t imageHeight = height();
    const auto pixels = static_cast<int32_t>(imageWidth * imageHeight);
    allocate(m_bufferCount->value(), bytes * static_cast<uint64_t>(int64_t{pixels}));
}

void DmaPort::allocate(uint64_t count, uint64_t size)
{
    if (m_memoryHead)
        freeRing();
    m_memoryHead = Brd_AllocMemHead(m_boardHandle, ringBytes(count, size), static_cast<int64_t>(count));
    if (!m_memoryHead)
        throwBrdError(Brd_getLastErrorNumber(m_boardHandle));
    for (uint64_t i = 0; i < count; ++i) {
        const auto number = static_cast<int64_t>(i);
        const auto buffer = std::make_shared<Buffer>(size);
        buffer->setReservedCallback([](Buffer*) {});
        buffer->setUnblockCallback([this](Buffer* unblocked) { unblockBuffer(*unblocked); });
        buffer->setNumber(number);
        m_ring.push_back(buffer);
        m_bufferByAddress[buffer->data()] = buffer;
        const int32_t added = Brd_AddMem(m_boardHandle, buffer->data(), size, number, m_memoryHead);
        if (added < 0)
            throwBrdError(added);
    }
    if (m_observer)
        m_observer->buffersChanged();
}

void DmaPort::freeRing()
{
    for (const auto& buffer : m_ring)
        Brd_DelMem(m_boardHandle, m_memoryHead, buffer->number());
    m_ring.clear();
    if (m_memoryHead)
        Brd_FreeMemHead(m_boardHandle, m_memoryHead);
}

std::shared_ptr<DmaPort> locked(const std::weak_ptr<DmaPort>& port)
{
    return lockedOrThrow(port, "No dma port is connected");
}

}   // namespace orvo::cognex
