#pragma once

#include "acquisition/AcquisitionStrategy.h"

namespace orvo::cognex {

/// The host sees the latest image only. A new one sends those back to the board that were not fetched.
class NewestOnlyStrategy : public AcquisitionStrategy {
public:
    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;
};

}   // namespace orvo::cognex
