#pragma once

#include <functional>
#include <utility>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// Calls a function when it is executed. Its failures are no AIKException: the host reads them bare.
class CommandFeature : public AdapterFeature {
public:
    using Function = std::function<void()>;

    CommandFeature();

    void setFunction(Function function) { m_function = std::move(function); }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    Function m_function;
};

}   // namespace orvo::cognex
