#include "sim/cameralib/Handles.h"

#include "sim/call/CallText.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

Handles& Handles::instance()
{
    static auto* const only = new Handles;
    return *only;
}

void Handles::endOldSessions()
{
    const uint64_t session = orvo_sim_core()->session();
    if (m_session == session)
        return;
    m_session = session;
    m_given = 0;
    m_symbols = 0;
    m_libraries.clear();
    m_cameras.clear();
}

uint64_t Handles::newNumber()
{
    return m_session << 40 | ++m_given << 4 | 8;
}

Handles::OpenLibrary& Handles::opened(uint64_t library)
{
    endOldSessions();
    const auto found = m_libraries.find(library);
    if (found == m_libraries.end())
        throw CameraError(CameraStatus::UnknownLibrary);
    return found->second;
}

uint64_t Handles::openLibrary(uint32_t boardIndex)
{
    const os::MutexLock lock(m_mutex);
    endOldSessions();
    const uint64_t handle = newNumber();
    m_libraries[handle] = {boardIndex, {}};
    return handle;
}

void Handles::closeLibrary(uint64_t library)
{
    const os::MutexLock lock(m_mutex);
    opened(library);
    m_libraries.erase(library);
    for (auto entry = m_cameras.begin(); entry != m_cameras.end();) {
        if (entry->second->library == library) {
            entry->second->camera->forget(entry->first);
            entry = m_cameras.erase(entry);
        } else {
            ++entry;
        }
    }
}

uint32_t Handles::boardOf(uint64_t library)
{
    const os::MutexLock lock(m_mutex);
    return opened(library).boardIndex;
}

void Handles::scan(uint64_t library, uint32_t mask, uint32_t maskedPorts)
{
    const os::MutexLock lock(m_mutex);
    OpenLibrary& searched = opened(library);
    searched.found.clear();
    for (uint32_t port = 0; port < Core::kMostPorts; ++port) {
        const Camera* const camera = orvo_sim_core()->camera(searched.boardIndex, port);
        const bool isChosen = port >= maskedPorts || (mask >> port & 1) != 0;
        if (camera && camera->isPresent() && isChosen)
            searched.found.insert(port);
    }
}

std::vector<uint32_t> Handles::found(uint64_t library)
{
    const os::MutexLock lock(m_mutex);
    const OpenLibrary& searched = opened(library);
    std::vector<uint32_t> ports;
    for (uint32_t port = 0; port < Core::kMostPorts; ++port) {
        const Camera* const camera = orvo_sim_core()->camera(searched.boardIndex, port);
        if (camera && (searched.found.contains(port) || (camera->isConnected() && camera->isPresent())))
            ports.push_back(port);
    }
    return ports;
}

uint64_t Handles::addCamera(uint64_t library, uint32_t port)
{
    const os::MutexLock lock(m_mutex);
    Camera* const camera = orvo_sim_core()->camera(opened(library).boardIndex, port);
    if (!camera)
        throw CameraError(CameraStatus::NoCamera);
    if (!camera->isPresent())
        throw CameraError(CameraStatus::Gone);
    auto added = std::make_shared<CameraHandle>();
    added->number = newNumber();
    added->library = library;
    added->symbol = ++m_symbols;
    added->port = port;
    added->camera = camera;
    m_cameras[added->number] = added;
    return added->number;
}

std::shared_ptr<CameraHandle> Handles::camera(uint64_t handle)
{
    const os::MutexLock lock(m_mutex);
    endOldSessions();
    const auto found = m_cameras.find(handle);
    if (found == m_cameras.end())
        throw CameraError(CameraStatus::UnknownCamera);
    return found->second;
}

void Handles::endCamera(uint64_t handle)
{
    camera(handle)->camera->forget(handle);
    const os::MutexLock lock(m_mutex);
    m_cameras.erase(handle);
}

std::string Handles::librarySymbol(uint64_t library)
{
    if (library == 0)
        return CallText::kNull;
    try {
        return std::to_string(boardOf(library));
    } catch (const CameraError&) {
        return CallText::kUnknown;
    }
}

std::string Handles::cameraSymbol(uint64_t handle)
{
    if (handle == 0)
        return CallText::kNull;
    try {
        return "c" + std::to_string(camera(handle)->symbol);
    } catch (const CameraError&) {
        return CallText::kUnknown;
    }
}

}   // namespace orvo::sim
