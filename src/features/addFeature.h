#pragma once

#include <memory>

#include "features/FeatureContainer.h"
#include "features/FeatureObserver.h"

namespace orvo::cognex {

/// What a host may do with a feature from the start.
struct Access {
    bool readable = false;
    bool writeable = false;
    bool available = false;
};

inline constexpr Access kReadWrite{.readable = true, .writeable = true, .available = true};
inline constexpr Access kReadOnly{.readable = true, .writeable = false, .available = true};

/// Makes a feature and adds it to the container: one declaration a feature, a set readable as a table.
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

/// Makes an observer that calls `react`, and lets it observe the feature. The result must live as long as the
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
