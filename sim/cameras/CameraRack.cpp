#include "sim/cameras/CameraRack.h"

namespace orvo::sim {

void CameraRack::unplugAll()
{
    const std::lock_guard lock(m_mutex);
    for (const auto& [place, camera] : m_cameras)
        camera->unplug();
}

void CameraRack::plugIn(uint32_t boardIndex, const CameraDescription& description)
{
    const std::lock_guard lock(m_mutex);
    SimulatedCamera*& camera = m_cameras[{boardIndex, description.port}];
    if (!camera)
        camera = new SimulatedCamera;
    camera->plugIn(description);
}

SimulatedCamera* CameraRack::find(uint32_t boardIndex, uint32_t port) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_cameras.find({boardIndex, port});
    return found != m_cameras.end() && found->second->isDescribed() ? found->second : nullptr;
}

std::vector<SimulatedCamera*> CameraRack::camerasOf(uint32_t boardIndex) const
{
    const std::lock_guard lock(m_mutex);
    std::vector<SimulatedCamera*> cameras;
    for (auto entry = m_cameras.lower_bound({boardIndex, 0}); entry != m_cameras.end(); ++entry)
        if (entry->first.first == boardIndex && entry->second->isDescribed())
            cameras.push_back(entry->second);
    return cameras;
}

void CameraRack::bringAllBack()
{
    const std::lock_guard lock(m_mutex);
    for (const auto& [place, camera] : m_cameras)
        camera->comeBack();
}

}   // namespace orvo::sim
