#include "sim/brdlib5/Board.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/ParameterDescription.h"
#include "sim/brdlib5/ParameterTable.h"

namespace orvo::sim {

namespace {

struct ExtentRow {
    built_in::ParameterName parameter;
    DmaChannel::Extent extent;
    DmaChannel::Limit most, step;
};

constexpr ExtentRow kExtents[] = {
    {built_in::kWidth, &Geometry::width, &DmaDescription::maxWidth, &DmaDescription::widthStep},
    {built_in::kHeight, &Geometry::height, &DmaDescription::maxHeight, &DmaDescription::heightStep},
    {built_in::kXOffset, &Geometry::xOffset, &DmaDescription::maxXOffset, &DmaDescription::offsetStep},
    {built_in::kYOffset, &Geometry::yOffset, &DmaDescription::maxYOffset, &DmaDescription::offsetStep},
};

/// The entry of a process's list at a position that came in as a parameter's word.
template <typename Entry>
const Entry& entryAt(const std::vector<Entry>& entries, int64_t position)
{
    if (position < 0 || static_cast<uint64_t>(position) >= entries.size())
        throw BrdError(kOutOfRange, "The process has nothing at position " + std::to_string(position));
    return entries[static_cast<size_t>(position)];
}

/// What feeds the DMA at that position; null for the applet's own pictures.
Camera* cameraFor(uint32_t boardIndex, const ProcessDescription& process, size_t position)
{
    const auto& ports = process.cameraPorts;
    const auto port = std::find_if(ports.begin(), ports.end(), [&](const CameraPortDescription& candidate) {
        return candidate.dma == position;
    });
    return port == ports.end() ? nullptr
                               : orvo_sim_core()->camera(boardIndex, static_cast<uint32_t>(port->number));
}

}   // namespace

Board::Board(uint32_t index, const BoardDescription& description, Applet applet)
    : m_index(index), m_applet(std::move(applet))
{
    for (const ProcessDescription& process : m_applet.processes)
        for (size_t position = 0; position < process.dmas.size(); ++position) {
            const DmaDescription& dma = process.dmas[position];
            Camera* const camera = cameraFor(index, process, position);
            m_dmas.emplace(dma.id, std::make_shared<DmaChannel>(index, dma, description.faults, camera));
        }
    addGeometryParameters();
    addProcessParameters();
    addDescribedParameters();
}

Board::~Board()
{
    stopAll();
}

void Board::addGeometryParameters()
{
    for (const ExtentRow& row : kExtents) {
        Parameter parameter{.id = row.parameter.id,
                            .name = row.parameter.name,
                            .entries = {},
                            .text = {},
                            .get = {},
                            .set = {}};
        parameter.get = [this, row](uint32_t dmaId, int64_t) {
            return Value(uint64_t{dma(dmaId).geometry().*row.extent});
        };
        parameter.set = [this, row](uint32_t dmaId, const Value& value) {
            const auto extent = static_cast<uint32_t>(std::get<uint64_t>(value));
            dma(dmaId).setExtent(row.extent, row.most, row.step, extent);
        };
        m_parameters.add(std::move(parameter));
    }
    Parameter format{.id = built_in::kFormat.id,
                     .name = built_in::kFormat.name,
                     .entries = {},
                     .text = {},
                     .get = {},
                     .set = {}};
    for (const BoardFormat& row : boardFormats())
        format.entries.push_back({row.number, row.name});
    format.get = [this](uint32_t dmaId, int64_t) {
        return Value(static_cast<uint64_t>(dma(dmaId).geometry().format->number));
    };
    format.set = [this](uint32_t dmaId, const Value& value) {
        dma(dmaId).setFormat(static_cast<uint32_t>(std::get<uint64_t>(value)));
    };
    m_parameters.add(std::move(format));
}

void Board::addProcessParameters()
{
    const auto add = [&](const built_in::ParameterName& parameter, bool takesWord, auto get) {
        if (m_applet.lacking.contains(parameter.id))
            return;
        m_parameters.add(
            {.id = parameter.id,
             .name = parameter.name,
             .type = ValueType::Int32,
             .entries = {},
             .text = {},
             .takesWord = takesWord,
             .get = [get](uint32_t scope, int64_t word) { return Value(int64_t(get(scope, word))); },
             .set = {}});
    };
    add(built_in::kProcessCount, false, [this](uint32_t, int64_t) { return m_applet.processes.size(); });
    add(built_in::kDmaCount, false, [this](uint32_t index, int64_t) { return process(index).dmas.size(); });
    add(built_in::kCameraPortCount, false,
        [this](uint32_t index, int64_t) { return process(index).cameraPorts.size(); });
    add(built_in::kDmaId, true,
        [this](uint32_t index, int64_t position) { return entryAt(process(index).dmas, position).id; });
    add(built_in::kCameraPort, true, [this](uint32_t index, int64_t position) {
        return entryAt(process(index).cameraPorts, position).number;
    });
}

/// One value of each for every DMA.
void Board::addDescribedParameters()
{
    for (const ParameterDescription& description : m_applet.parameters) {
        const auto stored = std::make_shared<StoredParameter>(description);
        Parameter parameter{.id = description.id,
                            .name = description.name,
                            .type = description.type,
                            .entries = description.entries,
                            .text = description.text,
                            .get = {},
                            .set = {}};
        parameter.get = [this, stored](uint32_t dmaId, int64_t) { return stored->get(dma(dmaId).id()); };
        if (description.isWriteable)
            parameter.set = [this, stored](uint32_t dmaId, const Value& value) {
                stored->set(dma(dmaId).id(), value);
            };
        m_parameters.add(std::move(parameter));
    }
}

const ProcessDescription& Board::process(uint32_t index) const
{
    if (index >= m_applet.processes.size())
        throw BrdError(kUnknownProcess, "The applet has no process " + std::to_string(index));
    return m_applet.processes[index];
}

DmaChannel& Board::dma(uint32_t id) const
{
    const auto found = m_dmas.find(id);
    if (found == m_dmas.end())
        throw BrdError(kUnknownDma, "The applet has no DMA " + std::to_string(id));
    return *found->second;
}

void Board::stopAll()
{
    for (const auto& [id, channel] : m_dmas)
        channel->stop();
}

void Board::addHead(void* handle, std::shared_ptr<MemoryHead> head)
{
    const os::MutexLock lock(m_mutex);
    m_heads.emplace(handle, std::move(head));
}

std::shared_ptr<MemoryHead> Board::head(const void* handle) const
{
    const os::MutexLock lock(m_mutex);
    const auto found = m_heads.find(handle);
    if (found == m_heads.end())
        throw BrdError(kUnknownHead,
                       handle ? "This is no memory head of the board" : "The memory head is null");
    return found->second;
}

void Board::removeHead(void* handle)
{
    head(handle)->requireIdle();
    const os::MutexLock lock(m_mutex);
    m_heads.erase(handle);
}

}   // namespace orvo::sim
