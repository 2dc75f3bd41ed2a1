#pragma once

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// A flag in memory, "True" or "False". Every text but "True" writes false, and none is refused.
class BooleanFeature : public AdapterFeature {
public:
    BooleanFeature() : AdapterFeature(FeatureType::Boolean) {}

    bool value() const { return m_value; }
    void setValue(bool value) { m_value = value; }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    bool m_value = false;
};

}   // namespace orvo::cognex
