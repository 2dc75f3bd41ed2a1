#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "os/ThreadSafety.h"
#include "sim/brdlib5/Applet.h"
#include "sim/brdlib5/DmaChannel.h"
#include "sim/brdlib5/MemoryHead.h"
#include "sim/brdlib5/ParameterTable.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// A board with its applet loaded. Threads: any.
class Board {
public:
    Board(uint32_t index, const BoardDescription& description, Applet applet);
    /// Ends what still runs.
    ~Board();

    uint32_t index() const { return m_index; }
    const Applet& applet() const { return m_applet; }
    const ParameterTable& parameters() const { return m_parameters; }

    /// Throws BrdError for an id that the applet doesn't have.
    DmaChannel& dma(uint32_t id) const;
    /// The DMA that is meant where a call names none.
    uint32_t firstDma() const { return m_dmas.empty() ? 0 : m_dmas.begin()->first; }
    void stopAll();

    /// Memory heads by handle. Throw BrdError for a handle that isn't one of this board.
    void addHead(void* handle, std::shared_ptr<MemoryHead> head);
    std::shared_ptr<MemoryHead> head(const void* handle) const;
    void removeHead(void* handle);

private:
    void addProcessParameters();
    void addGeometryParameters();
    void addDescribedParameters();
    const ProcessDescription& process(uint32_t index) const;

    const uint32_t m_index;
    const Applet m_applet;
    ParameterTable m_parameters;
    std::map<uint32_t, std::shared_ptr<DmaChannel>> m_dmas;   // by id

    mutable os::Mutex m_mutex;
    std::map<const void*, std::shared_ptr<MemoryHead>> m_heads ORVO_GUARDED_BY(m_mutex);
};

}   // namespace orvo::sim
