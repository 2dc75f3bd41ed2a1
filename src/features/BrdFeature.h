#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// What the board library keeps of each parameter, by the numbers that it publishes.
enum class BrdProperty : int32_t {
    Value = 0,
    Type = 1,
    Text = 3,
    EnumerationSize = 13,   // in bytes; above 0 only for an enumeration
    Enumeration = 14,       // the entries: a run of bytes, no text
};

/// A property that is a text. `status` is the library's answer; the text of a refused call is empty.
struct BrdPropertyText {
    int32_t status = 0;
    std::string text;
};

/// Asks the board library for a property in at most `size` bytes, its NUL included. `boardHandle` is that of
/// a loaded applet.
BrdPropertyText brdProperty(void* boardHandle, int32_t parameterId, BrdProperty property, size_t size);

/// Whether the parameter is an enumeration; false if the library refuses to give the size of its table. A
/// size that is no number throws as parseInt() does.
bool isEnumeration(void* boardHandle, int32_t parameterId);

/// The parameter's own text. Throws AIKException "brd error code: N".
std::string parameterText(void* boardHandle, int32_t parameterId);

/// A parameter of an applet as a feature: keeps no value, every access goes to the board library.
/// Threads: host, also during acquisition.
/// Throws:  runtime_error with the library's description of its failure, to which the container adds nothing.
class BrdFeature : public AdapterFeature {
public:
    // Set by the creator before the first access. The applet must stay loaded while the feature is used.
    int32_t parameterId() const { return m_parameterId; }
    void setParameterId(int32_t id) { m_parameterId = id; }
    void* boardHandle() const { return m_boardHandle; }
    void setBoardHandle(void* handle) { m_boardHandle = handle; }
    /// The DMA that a write is for; a read doesn't use it.
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
