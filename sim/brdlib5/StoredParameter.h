#pragma once

#include <cstdint>
#include <map>
#include <mutex>

#include "sim/brdlib5/ParameterDescription.h"

namespace orvo::sim {

/// What an open board keeps of a described parameter: a value for each DMA. Threads: any.
class StoredParameter {
public:
    /// The description must outlive it.
    explicit StoredParameter(const ParameterDescription& description) : m_description(description) {}

    Value get(uint32_t dma) const;
    /// `value` in the form of the parameter's type. Throws BrdError for one that it doesn't take.
    void set(uint32_t dma, const Value& value);

private:
    const ParameterDescription& m_description;
    mutable std::mutex m_mutex;
    std::map<uint32_t, Value> m_written;   // by DMA id
};

}   // namespace orvo::sim
