#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "os/ThreadSafety.h"
#include "sim/brdlib5/ParameterDescription.h"
#include "sim/brdlib5/Value.h"

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
    mutable os::Mutex m_mutex;
    std::map<uint32_t, Value> m_written ORVO_GUARDED_BY(m_mutex);   // by DMA id
};

/// A parameter of an open board's applet.
struct Parameter {
    int32_t id;
    std::string name;
    ValueType type = ValueType::UInt32;
    std::vector<ParameterEntry> entries;   // of an enumeration
    std::string text;                      // a word about it; empty: its name says it
    bool takesWord = false;                // the value goes in as well as out

    /// `scope`: the DMA id or the process index. `word`: what went in. Throws BrdError.
    std::function<Value(uint32_t scope, int64_t word)> get;
    /// Gets a value of the parameter's type; empty for what can't be written. Throws BrdError.
    std::function<void(uint32_t scope, const Value& value)> set;
};

/// All parameters of an applet, by id and by name. Built once; then any thread may read.
class ParameterTable {
public:
    void add(Parameter parameter) { m_parameters.push_back(std::move(parameter)); }

    /// Both throw BrdError for a parameter that the applet lacks.
    const Parameter& byId(int32_t id) const;
    int32_t idOf(std::string_view name) const;

    /// Writes the value of that type at an address. Throws BrdError for a value that the parameter doesn't
    /// take, and for a type that isn't its own: the further integer kind comes as UInt64 as well, and a double
    /// may hold any number.
    void set(int32_t id, uint32_t scope, ValueType type, const void* value) const;
    /// The bytes that a property of a parameter consists of, the NUL of a text among them.
    std::vector<std::byte> property(int32_t id, int32_t code, uint32_t scope) const;

private:
    std::vector<Parameter> m_parameters;
};

}   // namespace orvo::sim
