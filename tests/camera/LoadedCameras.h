#pragma once

#include "camera/eth/EthCamera.h"
#include "camera/eth/EthLibrary.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcLibrary.h"
#include "tests/brdlib/LoadedApplet.h"

namespace orvo::test {

/// A board with cameras behind its ports 0 and 1, searched, and the library of their family, open.
class LoadedCameras : public LoadedApplet {
protected:
    static json boardWithCameras(int type)
    {
        json board = Machine::grabber(0, type);
        board["cameras"] = {{{"port", 0}}, {{"port", 1}}};
        return board;
    }
    void loadCameras(int type)
    {
        load(Machine::appletOf({Machine::process({Machine::dma()})}), boardWithCameras(type));
    }
};

class GigECameras : public LoadedCameras {
protected:
    GigECameras()
    {
        loadCameras(2897);
        EXPECT_EQ(cognex::Eth_openBoard(0, 0, &library), 0);
        EXPECT_EQ(cognex::Eth_scanPorts(library, 0xFFFF'FFFF, 200), 0);
    }
    ~GigECameras() override { cognex::Eth_closeBoard(library); }

    /// c1, c2, ... to the library, in the order of the calls.
    std::shared_ptr<cognex::EthCamera> detected(uint32_t port) const
    {
        uint64_t handle = 0;
        EXPECT_EQ(cognex::Eth_getCameraByIndex(library, port, 0, &handle), 0);
        OrvoSim_clearJournal();
        return std::make_shared<cognex::EthCamera>(handle);
    }

    uint64_t library = 0;
};

class GenICamCameras : public LoadedCameras {
protected:
    GenICamCameras()
    {
        loadCameras(1872);
        const auto applet = reinterpret_cast<uint64_t>(board->applet()->handle());
        EXPECT_EQ(cognex::Ogc_openBoard(applet, 0, &library), 0);
        EXPECT_EQ(cognex::Ogc_scanPorts(library, 255, 5000, 0), 0);
    }
    ~GenICamCameras() override { cognex::Ogc_closeBoard(library); }

    std::shared_ptr<cognex::OgcCamera> connected(uint32_t port) const
    {
        uint64_t handle = 0;
        EXPECT_EQ(cognex::Ogc_getCameraOnPort(library, port, &handle), 0);
        EXPECT_EQ(cognex::Ogc_connectCamera(handle), 0);
        OrvoSim_clearJournal();
        return std::make_shared<cognex::OgcCamera>(handle);
    }

    uint64_t library = 0;
};

}   // namespace orvo::test
