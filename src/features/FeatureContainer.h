#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// The attributes of a feature, by the number that the host gives.
enum class FeatureAttribute : uint32_t { Description = 1, Readable = 2, Writeable = 3, Empty = 4 };

/// A set of features, found by name or by number. Each maker of features keeps one; a channel merges them all
/// into its own, and the host talks to that one only.
/// Threads: host. Filled while the channels are built, only read afterwards.
/// Owns:    its features, together with their makers.
/// Throws:  AIKException for an unknown name, runtime_error for an unknown number.
class FeatureContainer {
public:
    virtual ~FeatureContainer() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

    /// Enters the feature under its present name and under the number of names so far. By name the newest of
    /// equal names wins; the older keeps its number, and the newer shares its own with the next new name,
    /// which takes it over.
    void add(std::shared_ptr<AdapterFeature> feature);
    /// Adds the features that `other` has now, by their numbers. Does nothing if it has gone.
    void merge(const std::weak_ptr<FeatureContainer>& other);

    /// Switches all features that it has now on or off.
    void setAvailable(bool available) const;

    size_t count() const { return m_byIndex.size(); }
    const std::shared_ptr<AdapterFeature>& featureAt(uint32_t index) const;
    std::string nameAt(uint32_t index) const { return featureAt(index)->name(); }

    /// These three say what the host was doing when the feature threw an AIKException, and pass on all else.
    void read(const std::string& name, char* val) const;
    void write(const std::string& name, const char* val) const;
    void execute(const std::string& name) const;

    std::string attribute(const std::string& name, uint32_t attribute) const;
    FeatureType type(const std::string& name) const { return find(name).type(); }
    std::string validEnum(const std::string& name, uint32_t index) const;

private:
    AdapterFeature& find(const std::string& name) const;

    tools::logging::CachedLogger m_logger{"orvo.Cognex.FeatureContainer"};
    std::unordered_map<std::string, std::shared_ptr<AdapterFeature>> m_byName;
    std::unordered_map<uint32_t, std::shared_ptr<AdapterFeature>> m_byIndex;
};

}   // namespace orvo::cognex
