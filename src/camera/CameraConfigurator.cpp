#include "camera/CameraConfigurator.h"

#include <string_view>

#include "AIKException.h"
#include "features/BasicFeatures.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

// Not available before a camera is selected.
constexpr Access kSelectedReadWrite{.readable = true, .writeable = true, .available = false};
constexpr Access kSelectedCommand{.readable = false, .writeable = true, .available = false};

void answer(char* val, const std::string& text)
{
    copyBounded(val, text);
    val[kHostTextSize - 1] = '\0';
}

template <typename T>
T parsed(const char* val)
{
    const std::optional<T> number = parseNumber<T>(val);
    if (!number)
        throw AIKException("Value cannot be parsed");
    return *number;
}

}   // namespace

CameraConfigurator::CameraConfigurator() : m_features(std::make_shared<FeatureContainer>())
{
    m_key = addFeature<StringFeature>(*m_features, "CameraFeatureKey", "Parameter name for future access.",
                                      kSelectedReadWrite);
    addProxyValues<CameraConfigurator>(
        *m_features, kSelectedReadWrite, *this,
        {{"CameraStringValue", "This feature is for string parameter access.", FeatureType::String,
          &CameraConfigurator::getString, &CameraConfigurator::setString},
         {"CameraIntValue", "This feature is for int parameter access.", FeatureType::Integer,
          &CameraConfigurator::getInt, &CameraConfigurator::setInt},
         {"CameraFloatValue", "This feature is for float parameter access.", FeatureType::Float,
          &CameraConfigurator::getFloat, &CameraConfigurator::setFloat},
         {"CameraBooleanValue", "This feature is for bool parameter access.", FeatureType::Boolean,
          &CameraConfigurator::getBoolean, &CameraConfigurator::setBoolean},
         // To the host a string: the list of the entries stays with the camera.
         {"CameraEnumerationValue", "This feature is for enum parameter access.", FeatureType::String,
          &CameraConfigurator::getEnumeration, &CameraConfigurator::setEnumeration}});
    addProxyCommand(*m_features, "CameraCommand", "This feature is for command access.", kSelectedCommand,
                    *this, &CameraConfigurator::executeCommand);
}

void CameraConfigurator::getString(char* val)
{
    answer(val, camera()->parameters().string(key(), nullptr));
}

void CameraConfigurator::setString(const char* val)
{
    camera()->parameters().setString(key(), val);
}

void CameraConfigurator::getInt(char* val)
{
    answer(val, formatNumber(camera()->parameters().integer(key())));
}

void CameraConfigurator::setInt(const char* val)
{
    camera()->parameters().setInteger(key(), parsed<int64_t>(val));
}

void CameraConfigurator::getFloat(char* val)
{
    answer(val, formatNumber(camera()->parameters().floatingPoint(key())));
}

void CameraConfigurator::setFloat(const char* val)
{
    camera()->parameters().setFloatingPoint(key(), parsed<double>(val));
}

void CameraConfigurator::getBoolean(char* val)
{
    answer(val, AdapterFeature::flagText(camera()->parameters().boolean(key())));
}

void CameraConfigurator::setBoolean(const char* val)
{
    camera()->parameters().setBoolean(key(), std::string_view(val) != "True");
}

void CameraConfigurator::getEnumeration(char* val)
{
    answer(val, camera()->parameters().enumeration(key()));
}

void CameraConfigurator::setEnumeration(const char* val)
{
    camera()->parameters().setEnumeration(key(), val);
}

void CameraConfigurator::executeCommand()
{
    camera()->parameters().execute(key());
}

std::shared_ptr<const LibraryCamera> CameraConfigurator::camera() const
{
    auto camera = ofFamily(m_camera.lock());
    if (!camera)
        throw AIKException("No camera is connected");
    return camera;
}

std::string CameraConfigurator::key() const
{
    return m_key->value();
}

}   // namespace orvo::cognex
