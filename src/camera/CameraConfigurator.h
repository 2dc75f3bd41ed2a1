#pragma once

#include <memory>
#include <string>
#include <utility>

#include "features/FeatureContainer.h"

namespace orvo::cognex {

class Camera;
class LibraryCamera;
class StringFeature;

/// Gives the host all parameters of the selected camera through seven features and no list: it writes a
/// parameter's name into the key, then reads or writes one of five values, or executes. Every access asks the
/// camera; nothing is cached.
/// Threads: host, no lock.
/// Throws:  AIKException: the library's prefix and number, a text that is no number, a camera that has gone.
class CameraConfigurator {
public:
    CameraConfigurator();
    CameraConfigurator(const CameraConfigurator&) = delete;
    CameraConfigurator& operator=(const CameraConfigurator&) = delete;
    virtual ~CameraConfigurator() = default;

    void setCamera(std::weak_ptr<Camera> camera) { m_camera = std::move(camera); }
    /// Makes all seven features available, and deactivate() none. Neither touches the camera or the key.
    void activate() { m_features->setAvailable(true); }
    void deactivate() { m_features->setAvailable(false); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    // What the features call. `val` is a host buffer of 256 bytes, or a text.
    virtual void getString(char* val);
    virtual void setString(const char* val);
    virtual void getInt(char* val);
    virtual void setInt(const char* val);
    virtual void getFloat(char* val);
    virtual void setFloat(const char* val);
    virtual void getBoolean(char* val);
    /// "True" sends 0 and every other text 1: the reverse of getBoolean(), and meant so.
    virtual void setBoolean(const char* val);
    virtual void getEnumeration(char* val);
    virtual void setEnumeration(const char* val);
    virtual void executeCommand();

protected:
    /// The camera if it is one of this family, else null: its class says which library knows its handle.
    virtual std::shared_ptr<const LibraryCamera> ofFamily(const std::shared_ptr<Camera>& camera) const = 0;

private:
    /// The selected camera, to be kept for the length of one access.
    std::shared_ptr<const LibraryCamera> camera() const;
    /// The name of the parameter that the host has written.
    std::string key() const;

    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<StringFeature> m_key;
    std::weak_ptr<Camera> m_camera;
};

}   // namespace orvo::cognex
