#include "acquisition/AcquisitionEngine.h"

#include <new>

#include "AIKException.h"
#include "acquisition/NewestOnlyStrategy.h"
#include "acquisition/NoTransformation.h"
#include "acquisition/OldestFirstOverwriteStrategy.h"
#include "acquisition/OldestFirstStrategy.h"
#include "acquisition/RGBPackedToPlanar.h"
#include "brdlib/DmaPort.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

namespace {

// The one timeout of the acquisition path: short, because the host polls.
constexpr Ticks kImageTimeout{70'000};
static_assert(kImageTimeout == boost::chrono::milliseconds(7));

// The values of the features' entries.
enum Strategy : int32_t { kNewestOnly = 0, kOldestFirstOverwrite = 1, kOldestFirst = 2 };
enum Transformation : int32_t { kNone = 0, kRgb8PackedToPlanar = 1 };

std::shared_ptr<AcquisitionStrategy> makeStrategy(int32_t value, const std::weak_ptr<DmaPort>& dmaPort)
{
    switch (value) {
    case kNewestOnly:
        return std::make_shared<NewestOnlyStrategy>();
    case kOldestFirst: {
        auto strategy = std::make_shared<OldestFirstStrategy>();
        strategy->setDmaPort(dmaPort);
        return strategy;
    }
    default:
        return std::make_shared<OldestFirstOverwriteStrategy>();
    }
}

int32_t valueOf(const AcquisitionStrategy& strategy)
{
    if (dynamic_cast<const OldestFirstOverwriteStrategy*>(&strategy))
        return kOldestFirstOverwrite;
    return dynamic_cast<const NewestOnlyStrategy*>(&strategy) ? kNewestOnly : kOldestFirst;
}

std::shared_ptr<PixelTransformation> makeTransformation(int32_t value)
{
    if (value == kRgb8PackedToPlanar)
        return std::make_shared<RGB8PackedToPlanar>();
    return std::make_shared<NoTransformation>();
}

int32_t valueOf(const PixelTransformation& transformation)
{
    return dynamic_cast<const NoTransformation*>(&transformation) ? kNone : kRgb8PackedToPlanar;
}

[[noreturn]] void refuseChange()
{
    throw AIKException("This feature cannot be modified during acquisition.");
}

}   // namespace

AcquisitionEngine::AcquisitionEngine()
    : m_coordinator(std::make_shared<BufferCoordinator>()), m_features(std::make_shared<FeatureContainer>())
{
    m_strategyFeature =
        addFeature<EnumerationFeature>(*m_features, "AcquisitionStrategy",
                                       "Available buffer handling modes of this Data Stream.", kReadWrite);
    m_strategyFeature->addEntry("OldestFirstOverwrite", kOldestFirstOverwrite);
    m_strategyFeature->addEntry("NewestOnly", kNewestOnly);
    m_strategyFeature->addEntry("OldestFirst", kOldestFirst);
    m_strategyObserver = observe(*m_strategyFeature, [this] { applyStrategy(); });
    m_strategyFeature->setValue(kOldestFirstOverwrite);
    applyStrategy();

    m_transformationFeature = addFeature<EnumerationFeature>(*m_features, "Transformation",
                                                             "Pixel transformation on the CPU.", kReadWrite);
    m_transformationFeature->addEntry("NoTransformation", kNone);
    m_transformationFeature->addEntry("RGB8PackedToPlanar", kRgb8PackedToPlanar);
    m_transformationObserver = observe(*m_transformationFeature, [this] { applyTransformation(); });
    m_transformationFeature->setValue(kNone);
    applyTransformation();
}

AcquisitionEngine::~AcquisitionEngine() = default;

void AcquisitionEngine::newBuffer(std::weak_ptr<Buffer> buffer)
{
    m_strategy->newBuffer(buffer);
}

void AcquisitionEngine::acquisitionError(int64_t /*code*/)
{
    // Empty on purpose: a negative picture number has no buffer to return, and no way to the host.
}

void AcquisitionEngine::buffersChanged()
{
    const auto port = locked(m_dmaPort);
    const auto access = m_coordinator->lock();
    if (!access)
        throw std::bad_alloc();
    const auto freeQueue = access->freeQueue();
    const auto readyQueue = access->readyQueue();
    freeQueue->clear();
    readyQueue->clear();
    // For the whole ring in both queues: the callback thread then allocates nothing here.
    freeQueue->reserve(port->buffers().size());
    readyQueue->reserve(port->buffers().size());
    for (const auto& buffer : port->buffers())
        freeQueue->push(buffer);
    m_strategy->setCoordinator(m_coordinator);
}

void AcquisitionEngine::waitForIntegration()
{
    m_strategy->wait(kImageTimeout);
}

std::weak_ptr<Buffer> AcquisitionEngine::peekImage()
{
    return m_strategy->getImage(kImageTimeout);
}

void AcquisitionEngine::getImage(void* destination)
{
    if (!destination)
        throw AIKException("Pointer to raw memory is not valid");
    const std::weak_ptr<Buffer> image = m_strategy->getImage(kImageTimeout);
    m_transformation->transform(destination, image);
    m_strategy->release();
}

bool AcquisitionEngine::hasFreeBuffers()
{
    const auto access = m_coordinator->lock();
    if (!access)
        throw std::bad_alloc();
    return !access->freeQueue()->isEmpty();
}

bool AcquisitionEngine::isPlanar() const
{
    return m_transformationFeature->value() == kRgb8PackedToPlanar;
}

bool AcquisitionEngine::isRunning() const
{
    const auto port = m_dmaPort.lock();
    return port && port->isRunning();
}

void AcquisitionEngine::applyStrategy()
{
    if (isRunning()) {
        m_strategyFeature->setValue(valueOf(*m_strategy));
        refuseChange();
    }
    m_strategy = makeStrategy(m_strategyFeature->value(), m_dmaPort);
    m_strategy->setCoordinator(m_coordinator);
}

void AcquisitionEngine::applyTransformation()
{
    if (isRunning()) {
        m_transformationFeature->setValue(valueOf(*m_transformation));
        refuseChange();
    }
    m_transformation = makeTransformation(m_transformationFeature->value());
}

}   // namespace orvo::cognex
