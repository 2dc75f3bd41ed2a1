#pragma once

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <source_location>
#include <utility>

#include "camera/CamPort.h"
#include "camera/CameraConfigurator.h"
#include "camera/CameraConnector.h"
#include "camera/CameraLibrary.h"
#include "features/AdapterFeature.h"
#include "features/BasicFeatures.h"
#include "tools/logging/Logging.h"

namespace orvo::cognex {

class AppletWrapper;
class BoardWrapper;

/// How far the host has come with a connector. The numbers appear in the log and are no scale: the order is
/// that of the chain in which the states build on each other.
enum class ConnectorState : int32_t {
    NoPorts = 0,              // the library is open, and there is no port
    Uninitialized = 1,        // the library is closed
    NoCameras = 2,            // the selected port has no camera
    PortIndexInvalid = 3,     // "PortIndex" is not below the number of ports
    CameraSelected = 4,       // only passed through, on the way to the last two
    CameraIndexInvalid = 5,   // "CameraIndex" is not below the number of the port's cameras
    CameraDetected = 6,       // the selected camera is not connected
    CameraConnected = 7,
};

/// The cameras of a board, for the host: opens the camera library, owns the ports, and gives the selected
/// camera to the configurator. The host does all this through features; which of them are available at a
/// moment prescribes the order of its calls. The channels of a board share one connector.
/// Threads: host, no lock.
/// Owns:    the open library, the ports and the configurator.
/// Throws:  AIKException with the library's prefix and number, and what ports and cameras throw.
class CameraConnector {
public:
    CameraConnector(const CameraConnector&) = delete;
    CameraConnector& operator=(const CameraConnector&) = delete;
    /// Takes the ports down, in rising order, then closes the library. Drops refusals of the cameras.
    virtual ~CameraConnector();

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

    // Set once, after construction.
    void setApplet(std::weak_ptr<AppletWrapper> applet) { m_applet = std::move(applet); }
    void setBoard(std::weak_ptr<BoardWrapper> board) { m_board = std::move(board); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }
    /// The last state that was entered completely.
    ConnectorState state() const { return m_state; }

    /// Searches for cameras, by the rules of the family.
    virtual void detect() = 0;
    /// Opens the library. Does nothing if it is open.
    virtual void initialize() = 0;
    /// Takes down the ports and closes the library, then throws the first refusal of a camera to disconnect.
    virtual void close() = 0;

    /// Enters the state that follows from the ports, the cameras and the two indices. Throws AIKException, and
    /// keeps the old state, if "PortIndex" names none of the ports although it is below their number.
    void refreshState();

protected:
    using Ports = std::map<int32_t, std::shared_ptr<CamPort>>;   // by number, and numbers may have gaps

    CameraConnector(const CameraLibrary& library, std::unique_ptr<CameraConfigurator> configurator);

    /// Enters `state` and, first, the states that it builds on: the flags are always set from the bottom up,
    /// and never added to those of the previous state.
    virtual void updateState(ConnectorState state);

    std::weak_ptr<AppletWrapper> applet() const { return m_applet; }
    std::weak_ptr<BoardWrapper> board() const { return m_board; }
    /// Adds the features to those of the connector; part of its construction.
    void merge(const std::weak_ptr<FeatureContainer>& features) { m_features->merge(features); }

    /// 0 while the library is closed.
    uint64_t library() const { return m_library.get(); }
    /// Takes over the handle of a library just opened, and sets the two indices back to 0.
    void enterLibrary(uint64_t handle);
    /// The common part of close().
    void leaveLibrary();

    Ports& ports() { return m_ports; }
    void storePortCount();
    /// Disconnects and destroys the ports, in rising order. Returns the first refusal, null for none.
    std::exception_ptr takeDownPorts();
    int32_t portIndex() const { return m_portIndex->value(); }
    /// The port that "PortIndex" names. Throws AIKException if there is none.
    std::shared_ptr<CamPort> selectedPort() const;

private:
    struct StateRow {
        ConnectorState state;
        std::optional<ConnectorState> entersFirst;
        void (CameraConnector::*then)();
    };
    static const StateRow kStates[];

    /// Stores the counts of ports and cameras, and returns the state that follows from them and the indices.
    ConnectorState takeStock();

    // What the states do.
    void offerInitializeOnly();
    void offerDetect();
    void offerPortIndex();
    void offerCameraIndex();
    void offerNothingMore() {}
    void showCameraName();
    void offerCamera();

    std::weak_ptr<Camera> selectedCamera() const;
    void startAcquisition();
    void stopAcquisition();
    /// The port that "PortIndex" names, or null.
    std::shared_ptr<CamPort> findSelectedPort() const;
    /// The port that "PortIndex" names. Throws AIKException with `refusal` and the index if there is none.
    std::shared_ptr<CamPort> portFor(const char* refusal) const;
    template <typename Number>
    void traceNumber(const char* text, Number number,
                     const std::source_location& place = std::source_location::current());

    tools::logging::CachedLogger m_logger{"orvo.Cognex.CameraConnector"};
    std::weak_ptr<AppletWrapper> m_applet;
    std::weak_ptr<BoardWrapper> m_board;
    LibraryHandle m_library;
    bool m_initialized = false;   // not the same as an open handle: the library may hand out 0
    Ports m_ports;
    ConnectorState m_state = ConnectorState::Uninitialized;

    std::unique_ptr<CameraConfigurator> m_configurator;
    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<CommandFeature> m_initialize;
    std::shared_ptr<CommandFeature> m_close;
    std::shared_ptr<CommandFeature> m_detect;
    std::shared_ptr<CommandFeature> m_startAcquisition;
    std::shared_ptr<CommandFeature> m_stopAcquisition;
    std::shared_ptr<NumberFeature<unsigned long long>> m_cameraCount;
    std::shared_ptr<NumberFeature<unsigned long long>> m_cameraIndex;
    std::shared_ptr<StringFeature> m_cameraName;
    std::shared_ptr<NumberFeature<int>> m_portIndex;
    std::shared_ptr<NumberFeature<unsigned long long>> m_portCount;
    std::shared_ptr<FeatureObserverCallback> m_cameraIndexObserver;
    std::shared_ptr<FeatureObserverCallback> m_portIndexObserver;
};

}   // namespace orvo::cognex
