#pragma once

#include <cstdint>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// A parameter of an applet as a feature: keeps no value, every access goes to the board library.
/// Threads: host, also while pictures flow.
/// Throws:  runtime_error with the library's description of its failure: the host reads it bare.
class BrdFeature : public AdapterFeature {
public:
    // Set by the maker before the first access; the feature is good as long as the applet is loaded.
    int32_t parameterId() const { return m_parameterId; }
    void setParameterId(int32_t id) { m_parameterId = id; }
    void* boardHandle() const { return m_boardHandle; }
    void setBoardHandle(void* handle) { m_boardHandle = handle; }
    /// What a write is for; reads don't ask for it.
    int32_t dmaIndex() const { return m_dmaIndex; }
    void setDmaIndex(int32_t index) { m_dmaIndex = index; }

protected:
    using AdapterFeature::AdapterFeature;

    /// Throws for any `status` but 0.
    void check(int32_t status) const;
    /// `value` is what the parameter's type asks for: the address of a number, or the text itself.
    void setParameter(const void* value) const;

private:
    int32_t m_parameterId = -1;
    void* m_boardHandle = nullptr;
    int32_t m_dmaIndex = -1;
};

}   // namespace orvo::cognex
