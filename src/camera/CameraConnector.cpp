#include "camera/CameraConnector.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "AIKException.h"
#include "camera/Camera.h"
#include "features/NumberText.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

namespace {

using enum ConnectorState;

// What a host may do with a feature while the state makes it available.
constexpr Access kCommand{};
constexpr Access kShown{.readable = true, .writeable = false, .available = false};
constexpr Access kChosen{.readable = true, .writeable = true, .available = false};

}   // namespace

const CameraConnector::StateRow CameraConnector::kStates[] = {
    // state, what it enters first, what it then does
    {Uninitialized, std::nullopt, &CameraConnector::offerInitializeOnly},
    {NoPorts, Uninitialized, &CameraConnector::offerDetect},
    {PortIndexInvalid, NoPorts, &CameraConnector::offerPortIndex},
    {NoCameras, PortIndexInvalid, &CameraConnector::offerCameraIndex},
    {CameraIndexInvalid, NoCameras, &CameraConnector::offerNothingMore},
    {CameraSelected, CameraIndexInvalid, &CameraConnector::showCameraName},
    {CameraDetected, CameraSelected, &CameraConnector::offerCamera},
    {CameraConnected, CameraSelected, &CameraConnector::offerCamera},
};

CameraConnector::CameraConnector(const CameraLibrary& library,
                                 std::unique_ptr<CameraConfigurator> configurator)
    : m_library(library.closeBoard),
      m_configurator(std::move(configurator)),
      m_features(std::make_shared<FeatureContainer>())
{
    FeatureContainer& all = *m_features;
    m_initialize = addFeature<CommandFeature>(
        all, "InitializeCameraConnector",
        "This function must be called prior to any other function call to the connector.", kCommand);
    m_close = addFeature<CommandFeature>(
        all, "CloseCameraConnector",
        "This function must be called after no function of the connector is needed anymore.", kCommand);
    m_detect = addFeature<CommandFeature>(all, "Detect", "This function detects cameras.", kCommand);
    m_startAcquisition = addFeature<CommandFeature>(
        all, "StartAcquisition", "This function starts the acquisition on the camera.", kCommand);
    m_stopAcquisition = addFeature<CommandFeature>(
        all, "StopAcquisition", "This function stops the acquisition on the camera.", kCommand);
    m_cameraCount = addFeature<NumberFeature<unsigned long long>>(
        all, "CameraCount", "Number of the detected/connected cameras on the selected port.", kShown);
    m_cameraIndex = addFeature<NumberFeature<unsigned long long>>(
        all, "CameraIndex", "Selects a camera for further actions.", kChosen);
    m_cameraName = addFeature<StringFeature>(all, "CameraName", "Name of the selected camera.", kShown);
    m_portIndex =
        addFeature<NumberFeature<int>>(all, "PortIndex", "Selects a port for further actions.", kChosen);
    m_portCount = addFeature<NumberFeature<unsigned long long>>(all, "PortCount",
                                                                "Number of the available ports.", kShown);

    m_initialize->setAvailable(true);
    m_initialize->setFunction([this] { initialize(); });
    m_close->setFunction([this] { close(); });
    m_detect->setFunction([this] { detect(); });
    m_startAcquisition->setFunction([this] { startAcquisition(); });
    m_stopAcquisition->setFunction([this] { stopAcquisition(); });
    m_cameraIndexObserver = observe(*m_cameraIndex, [this] { refreshState(); });
    m_portIndexObserver = observe(*m_portIndex, [this] { refreshState(); });

    merge(m_configurator->features());
}

CameraConnector::~CameraConnector()
{
    takeDownPorts();   // in rising order, which the map's own destructor doesn't promise
}

void CameraConnector::refreshState()
{
    updateState(takeStock());
}

ConnectorState CameraConnector::takeStock()
{
    if (!m_initialized)
        return Uninitialized;
    const uint64_t ports = m_ports.size();
    traceNumber("Connector State (found ports): ", ports);
    storePortCount();
    if (ports == 0)
        return NoPorts;
    if (static_cast<uint64_t>(int64_t{portIndex()}) >=
        ports)   // unsigned, so that a negative index is too large
        return PortIndexInvalid;

    const auto port = selectedPort();
    const uint64_t cameras = port->connection()->cameraCount();
    m_cameraCount->setValue(cameras);
    traceNumber("Connector State (found cameras): ", cameras);
    if (cameras == 0)
        return NoCameras;
    if (m_cameraIndex->value() >= cameras)
        return CameraIndexInvalid;
    return port->isConnected() ? CameraConnected : CameraDetected;
}

void CameraConnector::updateState(ConnectorState state)
{
    traceNumber("Connector update state : ", static_cast<int32_t>(state));
    const auto* const row = std::find_if(std::begin(kStates), std::end(kStates),
                                         [&](const StateRow& candidate) { return candidate.state == state; });
    if (row != std::end(kStates)) {
        if (row->entersFirst)
            updateState(*row->entersFirst);
        (this->*row->then)();
    }
    m_state = state;
}

void CameraConnector::offerInitializeOnly()
{
    m_configurator->deactivate();
    m_initialize->setAvailable(true);
    for (AdapterFeature* const feature : std::initializer_list<AdapterFeature*>{
             m_close.get(), m_detect.get(), m_startAcquisition.get(), m_stopAcquisition.get(),
             m_cameraCount.get(), m_cameraIndex.get(), m_cameraName.get(), m_portIndex.get(),
             m_portCount.get()})
        feature->setAvailable(false);
}

void CameraConnector::offerDetect()
{
    m_initialize->setAvailable(false);
    m_close->setAvailable(true);
    m_detect->setAvailable(true);
}

void CameraConnector::offerPortIndex()
{
    m_portIndex->setAvailable(true);
    storePortCount();
    m_portCount->setAvailable(true);
}

void CameraConnector::offerCameraIndex()
{
    m_cameraCount->setValue(selectedPort()->connection()->cameraCount());
    m_cameraCount->setAvailable(true);
    m_cameraIndex->setAvailable(true);
}

void CameraConnector::showCameraName()
{
    m_cameraName->setValue(locked(selectedCamera())->getName());
    m_cameraName->setAvailable(true);
}

void CameraConnector::offerCamera()
{
    const auto camera = selectedCamera();
    m_startAcquisition->setAvailable(true);
    m_stopAcquisition->setAvailable(true);
    m_configurator->setCamera(camera);
    m_configurator->activate();
}

void CameraConnector::enterLibrary(uint64_t handle)
{
    m_library.reset(handle);
    m_initialized = true;
    m_portIndex->setValue(0);
    m_cameraIndex->setValue(0);
}

void CameraConnector::leaveLibrary()
{
    const std::exception_ptr refusal = takeDownPorts();
    m_library.reset();
    m_initialized = false;
    refreshState();
    if (refusal)
        std::rethrow_exception(refusal);
}

void CameraConnector::storePortCount()
{
    m_portCount->setValue(m_ports.size());
}

std::exception_ptr CameraConnector::takeDownPorts()
{
    std::exception_ptr firstRefusal;
    while (!m_ports.empty()) {
        const auto entry = m_ports.extract(m_ports.begin());
        try {
            entry.mapped()->disconnect();
        } catch (...) {   // the others are taken down all the same, and the caller is told at the end
            if (!firstRefusal)
                firstRefusal = std::current_exception();
        }
    }
    return firstRefusal;
}

std::shared_ptr<CamPort> CameraConnector::selectedPort() const
{
    auto port = findSelectedPort();
    if (!port)
        throw AIKException("Selected port is not available.");
    return port;
}

std::shared_ptr<CamPort> CameraConnector::findSelectedPort() const
{
    const auto entry = m_ports.find(portIndex());
    return entry == m_ports.end() ? nullptr : entry->second;
}

std::weak_ptr<Camera> CameraConnector::selectedCamera() const
{
    return selectedPort()->connection()->camera(m_cameraIndex->value());
}

std::shared_ptr<CamPort> CameraConnector::portFor(const char* refusal) const
{
    auto port = findSelectedPort();
    if (!port)
        throw AIKException(refusal + toText(int64_t{portIndex()}) + ") is invalid");
    return port;
}

// That each of the two refusals names the other command is deliberate: hosts compare these texts.
void CameraConnector::startAcquisition()
{
    portFor("Cannot stop aquisition: camera port index (")->startAcquisition();
}

void CameraConnector::stopAcquisition()
{
    portFor("Cannot start aquisition: camera port index (")->stopAcquisition();
}

template <typename Number>
void CameraConnector::traceNumber(const char* text, Number number, const std::source_location& place)
{
    tools::logging::recordTrace(logger(), {"camera/CameraConnector", place.line()},
                                [&](std::ostream& stream) { stream << text << number; });
}

}   // namespace orvo::cognex
