#include "acquisition/AcquisitionEngine.h"

#include <span>

#include "AIKException.h"
#include "acquisition/AcquisitionStrategy.h"
#include "acquisition/PixelTransformation.h"
#include "brdlib/DmaPort.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

namespace {

// The one timeout of the acquisition path: short, because the host polls.
constexpr Ticks kImageTimeout{70'000};
static_assert(kImageTimeout == std::chrono::milliseconds(7));

/// The row of a feature's value; the default one for a value that has none.
template <typename Row>
const Row& rowOf(std::span<const Row> rows, int32_t value)
{
    for (const Row& row : rows)
        if (row.value == value)
            return row;
    return rows.front();
}

/// A feature by which the host chooses one of the rows.
template <typename Row>
std::shared_ptr<EnumerationFeature> addChoice(FeatureContainer& features, const char* name,
                                              const char* description, std::span<const Row> rows)
{
    auto feature = addFeature<EnumerationFeature>(features, name, description, kReadWrite);
    for (const Row& row : rows)
        feature->addEntry(row.name, row.value);
    feature->setValue(rows.front().value);
    return feature;
}

[[noreturn]] void refuseChange()
{
    throw AIKException("This feature cannot be modified during acquisition.");
}

}   // namespace

AcquisitionEngine::AcquisitionEngine()
    : m_coordinator(std::make_shared<BufferCoordinator>()), m_features(std::make_shared<FeatureContainer>())
{
    m_strategyFeature = addChoice(*m_features, "AcquisitionStrategy",
                                  "Available buffer handling modes of this Data Stream.", strategies());
    m_strategyObserver = observe(*m_strategyFeature, [this] { applyStrategy(); });
    applyStrategy();

    m_transformationFeature =
        addChoice(*m_features, "Transformation", "Pixel transformation on the CPU.", transformations());
    m_transformationObserver = observe(*m_transformationFeature, [this] { applyTransformation(); });
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

void AcquisitionEngine::buffersGone()
{
    // The queues stay as they are until a new ring is complete: a host may start after a rebuild that failed,
    // and the board then fills the buffers that were made.
    m_coordinator->lock().forgetCurrent();
}

void AcquisitionEngine::buffersChanged()
{
    const auto port = locked(m_dmaPort);
    BufferAccess queues = m_coordinator->lock();
    queues.forgetAll();
    // Both queues get room for the whole ring, so that the callback thread allocates nothing.
    queues.freeQueue().reserve(port->buffers().size());
    queues.readyQueue().reserve(port->buffers().size());
    for (const auto& buffer : port->buffers())
        queues.freeQueue().push(buffer);
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
    return !m_coordinator->lock().freeQueue().isEmpty();
}

bool AcquisitionEngine::isPlanar() const
{
    return rowOf(transformations(), m_transformationFeature->value()).isPlanar;
}

bool AcquisitionEngine::isRunning() const
{
    const auto port = m_dmaPort.lock();
    return port && port->isRunning();
}

void AcquisitionEngine::applyStrategy()
{
    if (isRunning()) {
        m_strategyFeature->setValue(m_strategyValue);
        refuseChange();
    }
    const StrategyRow& chosen = rowOf(strategies(), m_strategyFeature->value());
    m_strategy = chosen.make(m_dmaPort);
    m_strategyValue = chosen.value;
    m_strategy->setCoordinator(m_coordinator);
}

void AcquisitionEngine::applyTransformation()
{
    if (isRunning()) {
        m_transformationFeature->setValue(m_transformationValue);
        refuseChange();
    }
    const TransformationRow& chosen = rowOf(transformations(), m_transformationFeature->value());
    m_transformation = chosen.make();
    m_transformationValue = chosen.value;
}

}   // namespace orvo::cognex
