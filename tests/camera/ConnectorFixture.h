#pragma once

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "camera/CameraConnector.h"
#include "tests/camera/CameraLibrariesFake.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/BoardLibraryFake.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"

namespace orvo::test {

/// A board whose applet has these camera ports, process by process; a negative number is none that the applet
/// tells.
class AppletFake : public BoardLibraryFake {
public:
    std::vector<std::vector<int32_t>> camPorts = {{0, 1}};

    int32_t Brd_getParameterWithType(void* board, int32_t id, void* value, uint32_t dma,
                                     int32_t type) override;
    int32_t Brd_getParameter(void* board, int32_t id, void* value, uint32_t dma) override;
};

/// A connector of board 4, driven through its features as a host does.
template <typename Connector>
class ConnectorFixture : public testing::Test {
protected:
    ConnectorFixture() { connect(); }

    /// Makes the connector anew, for the applet as it is now.
    void connect()
    {
        connector.reset();
        applet = std::make_shared<cognex::AppletWrapper>(reinterpret_cast<void*>(0x55));
        connector = std::make_unique<Connector>();
        connector->setApplet(applet);
        connector->setBoard(board);
        features = connector->features().lock();
        libraries.takeJournal();
    }

    void execute(const std::string& name) { features->execute(name); }
    void write(const std::string& name, const std::string& text) { features->write(name, text.c_str()); }
    std::string read(const std::string& name) { return reading(*features, name); }
    std::string failureOf(const std::string& name)
    {
        return aikFailure([&] { execute(name); });
    }
    void openAndDetect()
    {
        execute("InitializeCameraConnector");
        execute("Detect");
        libraries.takeJournal();
    }

    LibraryUse use;
    AppletFake appletFake;
    CameraLibrariesFake libraries;
    std::shared_ptr<cognex::BoardWrapper> board = cognex::BoardWrapper::create(4);
    std::shared_ptr<cognex::AppletWrapper> applet;
    std::unique_ptr<Connector> connector;
    std::shared_ptr<cognex::FeatureContainer> features;
};

/// The numbers of the features that are available.
std::set<uint32_t> available(const cognex::FeatureContainer& features);

}   // namespace orvo::test
