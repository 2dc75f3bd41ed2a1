#pragma once

#include "acquisition/AcquisitionStrategy.h"
#include "tools/logging/CachedLogger.h"

namespace orvo::cognex {

/// The host sees images oldest first. When no buffer is left for the board, the oldest image goes back to it.
class OldestFirstOverwriteStrategy : public AcquisitionStrategy {
public:
    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;

    virtual tools::logging::Logger* getLogger() { return m_logger.get(); }

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.AcquisitionEngine"};
};

}   // namespace orvo::cognex
