#pragma once

#include <memory>
#include <string>
#include <utility>

#include "camera/Camera.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

class StringFeature;

/// Gives the host all parameters of the selected camera through seven features: it writes a parameter's name
/// into the key, then reads or writes one of five values, or executes the command. Every access goes to the
/// camera; nothing is cached.
/// Threads: host, no lock.
/// Throws:  AIKException: the library's prefix and number, a text that is no number, no camera.
class CameraConfigurator {
public:
    CameraConfigurator();
    CameraConfigurator(const CameraConfigurator&) = delete;
    CameraConfigurator& operator=(const CameraConfigurator&) = delete;
    virtual ~CameraConfigurator() = default;

    void setCamera(std::weak_ptr<Camera> camera) { m_camera = std::move(camera); }
    /// Makes all seven features available; deactivate() makes them unavailable. The camera and the key stay.
    void activate() { m_features->setAvailable(true); }
    void deactivate() { m_features->setAvailable(false); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    // What the features call. `val` is a host buffer of kHostTextSize bytes, or a text.
    virtual void getString(char* val);
    virtual void setString(const char* val);
    virtual void getInt(char* val);
    virtual void setInt(const char* val);
    virtual void getFloat(char* val);
    virtual void setFloat(const char* val);
    virtual void getBoolean(char* val);
    /// "True" sends 0 and every other text 1, the reverse of getBoolean(). Deliberate: hosts rely on it.
    virtual void setBoolean(const char* val);
    virtual void getEnumeration(char* val);
    virtual void setEnumeration(const char* val);
    virtual void executeCommand();

protected:
    /// The camera if it is of this family, else null: another library wouldn't know its handle.
    virtual std::shared_ptr<const LibraryCamera> ofFamily(const std::shared_ptr<Camera>& camera) const = 0;

private:
    /// The selected camera; the caller keeps it for the length of one access.
    std::shared_ptr<const LibraryCamera> camera() const;
    /// The name of the parameter that the host has written.
    std::string key() const;

    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<StringFeature> m_key;
    std::weak_ptr<Camera> m_camera;
};

/// The configurator for the cameras of one class.
template <typename FamilyCamera>
class FamilyConfigurator : public CameraConfigurator {
protected:
    std::shared_ptr<const LibraryCamera> ofFamily(const std::shared_ptr<Camera>& camera) const override
    {
        return std::dynamic_pointer_cast<const FamilyCamera>(camera);
    }
};

}   // namespace orvo::cognex
