#pragma once

#include <functional>
#include <utility>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// Keeps no value: hands reads, writes and execution to functions of its creator, who sets the type too. A
/// read function may write up to 256 bytes.
class ProxyFeature : public AdapterFeature {
public:
    using ReadFunction = std::function<void(char*)>;
    using WriteFunction = std::function<void(const char*)>;
    using ExecuteFunction = std::function<void()>;

    ProxyFeature();

    void setReadFunction(ReadFunction function) { m_readFunction = std::move(function); }
    void setWriteFunction(WriteFunction function) { m_writeFunction = std::move(function); }
    void setExecuteFunction(ExecuteFunction function) { m_executeFunction = std::move(function); }

protected:
    void doRead(char* val) override { m_readFunction(val); }
    void doWrite(const char* val) override { m_writeFunction(val); }
    void doExecute() override { m_executeFunction(); }

private:
    ReadFunction m_readFunction;
    WriteFunction m_writeFunction;
    ExecuteFunction m_executeFunction;
};

}   // namespace orvo::cognex
