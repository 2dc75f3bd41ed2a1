#include "features/FeatureContainer.h"

#include <stdexcept>
#include <utility>

#include "AIKException.h"

namespace orvo::cognex {

namespace {

template <typename Access>
void wrapFailure(const char* whatFailed, Access&& access)
{
    try {
        access();
    } catch (const AIKException& failure) {
        throw AIKException(std::string(whatFailed) + failure.what() + ")");
    }
}

}   // namespace

void FeatureContainer::add(std::shared_ptr<AdapterFeature> feature)
{
    // The number of names, not of features: a repeated name does not advance the next number.
    const auto index = static_cast<uint32_t>(m_byName.size());
    m_byIndex[index] = feature;
    const std::string name = feature->name();
    m_byName[name] = std::move(feature);
}

void FeatureContainer::merge(const std::weak_ptr<FeatureContainer>& other)
{
    const auto source = other.lock();
    if (!source)
        return;
    const auto count = static_cast<uint32_t>(source->count());
    for (uint32_t i = 0; i < count; ++i)
        add(source->featureAt(i));
}

void FeatureContainer::setAvailable(bool available) const
{
    for (const auto& [index, feature] : m_byIndex)
        feature->setAvailable(available);
}

const std::shared_ptr<AdapterFeature>& FeatureContainer::featureAt(uint32_t index) const
{
    const auto entry = m_byIndex.find(index);
    if (entry == m_byIndex.end())
        throw std::runtime_error("Cannot find feature with the given index");
    return entry->second;
}

void FeatureContainer::read(const std::string& name, char* val) const
{
    AdapterFeature& feature = find(name);
    wrapFailure("Feature could not be read. (", [&] { feature.read(val); });
}

void FeatureContainer::write(const std::string& name, const char* val) const
{
    AdapterFeature& feature = find(name);
    wrapFailure("Feature could not be written. (", [&] { feature.write(val); });
}

void FeatureContainer::execute(const std::string& name) const
{
    AdapterFeature& feature = find(name);
    wrapFailure("Command could not be executed. (", [&] { feature.execute(); });
}

std::string FeatureContainer::attribute(const std::string& name, uint32_t attribute) const
{
    const AdapterFeature& feature = find(name);
    switch (FeatureAttribute{attribute}) {
    case FeatureAttribute::Description:
        return feature.description();
    case FeatureAttribute::Readable:
        return feature.readableText();
    case FeatureAttribute::Writeable:
        return feature.writeableText();
    case FeatureAttribute::Empty:
        return {};
    }
    throw AIKException("Attribute type is unknown.");
}

std::string FeatureContainer::validEnum(const std::string& name, uint32_t index) const
{
    return find(name).validEnum(static_cast<int32_t>(index));
}

AdapterFeature& FeatureContainer::find(const std::string& name) const
{
    const auto entry = m_byName.find(name);
    if (entry == m_byName.end())
        throw AIKException("Cannot find feature with the name: " + name);
    return *entry->second;
}

}   // namespace orvo::cognex
