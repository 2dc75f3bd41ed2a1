#pragma once

#include "features/BrdFeature.h"

namespace orvo::cognex {

/// A text parameter of an applet. A read copies as many bytes as the library counts and adds no NUL, since the
/// library counts its own. A read that the library refuses doesn't fail: it copies as many zeros as the
/// library has counted, none if it refused the question for the length.
class BrdStringFeature : public BrdFeature {
public:
    BrdStringFeature() : BrdFeature(FeatureType::String) {}

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;
};

}   // namespace orvo::cognex
