#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// The attributes of a feature, by the number that the host gives.
enum class FeatureAttribute : uint32_t { Description = 1, Readable = 2, Writeable = 3, Empty = 4 };

/// A set of features, found by name or by number. Each object with features keeps one; a channel merges them
/// into its own, which is the one that the host uses.
/// Threads: host. Filled while the channels are built, only read afterwards.
/// Owns:    its features, jointly with the objects that made them.
/// Throws:  AIKException for an unknown name, runtime_error for an unknown number.
class FeatureContainer {
public:
    virtual ~FeatureContainer() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

    /// Enters the feature under its present name, and under the number of names so far. If the name is taken,
    /// the new feature replaces the old one by name; the old one keeps its number, and the next feature with a
    /// new name takes over the number of this one.
    void add(std::shared_ptr<AdapterFeature> feature);
    /// Adds the present features of `other`, in the order of their numbers. Does nothing if `other` has expired.
    void merge(const std::weak_ptr<FeatureContainer>& other);

    /// Makes all present features available, or none.
    void setAvailable(bool available) const;

    size_t count() const { return m_byIndex.size(); }
    const std::shared_ptr<AdapterFeature>& featureAt(uint32_t index) const;
    std::string nameAt(uint32_t index) const { return featureAt(index)->name(); }

    /// These three add what the host was doing to the text of an AIKException, and pass on any other failure.
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

/// What a host may do with a feature from the start.
struct Access {
    bool readable = false;
    bool writeable = false;
    bool available = false;
};

inline constexpr Access kReadWrite{.readable = true, .writeable = true, .available = true};
inline constexpr Access kReadOnly{.readable = true, .writeable = false, .available = true};

/// Makes a feature and adds it to the container: one call a feature, so that a set reads as a table.
template <typename Feature>
std::shared_ptr<Feature> addFeature(FeatureContainer& container, const char* name, const char* description,
                                    const Access& access)
{
    auto feature = std::make_shared<Feature>();
    feature->setName(name);
    feature->setDescription(description);
    feature->setReadable(access.readable);
    feature->setWriteable(access.writeable);
    feature->setAvailable(access.available);
    container.add(feature);
    return feature;
}

/// Makes an observer that calls `react`, and adds it to the feature. The caller must keep it as long as the
/// feature can be written.
template <typename React>
std::shared_ptr<FeatureObserverCallback> observe(AdapterFeature& feature, React react)
{
    auto observer = std::make_shared<FeatureObserverCallback>();
    observer->setCallback([react](AdapterFeature*) { react(); });
    feature.addObserver(observer.get());
    return observer;
}

}   // namespace orvo::cognex
