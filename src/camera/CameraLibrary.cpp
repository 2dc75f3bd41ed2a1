#include "camera/CameraLibrary.h"

#include "AIKException.h"

namespace orvo::cognex {

void CameraLibrary::check(int32_t status) const
{
    if (status != 0)
        throw AIKException(errorPrefix + std::to_string(status));
}

int64_t CameraParameters::integer(const std::string& name) const
{
    int64_t value = 0;
    m_library.check(m_library.getInteger(m_camera, name.c_str(), &value));
    return value;
}

void CameraParameters::setInteger(const std::string& name, int64_t value) const
{
    m_library.check(m_library.setInteger(m_camera, name.c_str(), value));
}

bool CameraParameters::boolean(const std::string& name) const
{
    int32_t value = 0;
    m_library.check(m_library.getBoolean(m_camera, name.c_str(), &value));
    return value != 0;
}

void CameraParameters::setBoolean(const std::string& name, bool value) const
{
    m_library.check(m_library.setBoolean(m_camera, name.c_str(), value ? 1 : 0));
}

double CameraParameters::floatingPoint(const std::string& name) const
{
    double value = 0;
    m_library.check(m_library.getFloat(m_camera, name.c_str(), &value));
    return value;
}

void CameraParameters::setFloatingPoint(const std::string& name, double value) const
{
    m_library.check(m_library.setFloat(m_camera, name.c_str(), value));
}

std::string CameraParameters::string(const std::string& name, char* buffer) const
{
    char* text = buffer;
    m_library.check(m_library.getString(m_camera, name.c_str(), &text));
    return text ? text : "";
}

void CameraParameters::setString(const std::string& name, const char* text) const
{
    m_library.check(m_library.setString(m_camera, name.c_str(), text));
}

std::string CameraParameters::enumeration(const std::string& name) const
{
    char* text = nullptr;
    m_library.check(m_library.getEnumeration(m_camera, name.c_str(), &text));
    return text ? text : "";
}

void CameraParameters::setEnumeration(const std::string& name, const char* text) const
{
    m_library.check(m_library.setEnumeration(m_camera, name.c_str(), text));
}

void CameraParameters::execute(const std::string& name) const
{
    m_library.check(m_library.executeCommand(m_camera, name.c_str()));
}

}   // namespace orvo::cognex
