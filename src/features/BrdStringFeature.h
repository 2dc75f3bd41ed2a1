#pragma once

#include "features/BrdFeature.h"

namespace orvo::cognex {

/// A text parameter of an applet. A read copies as many bytes as the library counts and adds no NUL: the
/// library counts its own. A read that the library refuses is silent: it copies what the length has come to, in
/// zeros, which is nothing if the first question was refused.
class BrdStringFeature : public BrdFeature {
public:
    BrdStringFeature() : BrdFeature(FeatureType::String) {}

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;
};

}   // namespace orvo::cognex
