#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "features/FeatureContainer.h"

namespace orvo::cognex {

class DmaPort;
class StringFeature;

/// Opens all parameters of an applet to the host through four features. The host writes a parameter's name into
/// the key, then reads or writes one of three values, whose kind must fit the parameter's type. Nothing is
/// cached: each access asks the board for the parameter's id and type.
/// Threads: host, also while pictures flow. No lock.
/// Throws:  AIKException "brd error code: N" or for a value of the wrong kind, runtime_error for a text that
///          is no number.
class BrdConfigurator {
public:
    BrdConfigurator();
    BrdConfigurator(const BrdConfigurator&) = delete;
    BrdConfigurator& operator=(const BrdConfigurator&) = delete;
    virtual ~BrdConfigurator() = default;

    /// Set once, by the builder of the channel: the DMA whose parameters these are.
    void setDmaPort(std::weak_ptr<DmaPort> dmaPort) { m_dmaPort = std::move(dmaPort); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    // What the features call. `val` is a host buffer of 256 bytes, or a text.
    virtual void readString(char* val);
    virtual void writeString(const char* val);
    virtual void readInt(char* val);
    virtual void writeInt(const char* val);
    virtual void readFloat(char* val);
    /// To a parameter of any type: the library decides.
    virtual void writeFloat(const char* val);

private:
    /// How a parameter of one integer type is written.
    struct IntegerType {
        int32_t type;
        int32_t writtenAs;
        void (BrdConfigurator::*write)(const char* val, int32_t typeCode) const;
    };
    static const IntegerType kIntegerTypes[];

    /// By the parameter's type now. Throws AIKException if it is no integer.
    const IntegerType& integerType() const;
    int32_t parameterId() const;
    int32_t parameterType() const;
    void readValue(char* val) const;
    template <typename T>
    void writeNumber(const char* val, int32_t typeCode) const;

    std::weak_ptr<DmaPort> m_dmaPort;
    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<StringFeature> m_key;
};

}   // namespace orvo::cognex
