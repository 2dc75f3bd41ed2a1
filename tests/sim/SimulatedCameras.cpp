#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

uint64_t SimulatedCameras::openEth(int32_t boardIndex)
{
    uint64_t library = 0;
    EXPECT_EQ(0, Eth_openBoard(boardIndex, 0, &library));
    EXPECT_EQ(0, Eth_scanPorts(library, 0xFFFF'FFFF, 200));
    return library;
}

uint64_t SimulatedCameras::openOgc(void* board)
{
    uint64_t library = 0;
    EXPECT_EQ(0, Ogc_openBoard(reinterpret_cast<uintptr_t>(board), 0, &library));
    EXPECT_EQ(0, Ogc_scanPorts(library, 255, 5000, 0));
    return library;
}

uint64_t SimulatedCameras::ethCamera(uint64_t library, uint32_t port)
{
    uint64_t camera = 0;
    EXPECT_EQ(0, Eth_getCameraByIndex(library, port, 0, &camera));
    return camera;
}

uint64_t SimulatedCameras::ogcCamera(uint64_t library, uint32_t position)
{
    uint64_t camera = 0;
    EXPECT_EQ(0, Ogc_getCameraOnPort(library, position, &camera));
    return camera;
}

uint64_t SimulatedCameras::connectedEth(uint32_t port)
{
    const uint64_t camera = ethCamera(openEth(), port);
    EXPECT_EQ(0, Eth_connectCamera(camera));
    return camera;
}

int64_t SimulatedCameras::integer(uint64_t camera, const char* name)
{
    int64_t value = 0;
    EXPECT_EQ(0, Eth_getIntegerValue(camera, name, &value)) << name;
    return value;
}

std::string SimulatedCameras::text(uint64_t camera, const char* name)
{
    char* value = nullptr;
    EXPECT_EQ(0, Eth_getStringValue(camera, name, &value)) << name;
    return value ? value : "";
}

std::string SimulatedCameras::entry(uint64_t camera, const char* name)
{
    char* value = nullptr;
    EXPECT_EQ(0, Eth_getEnumerationValue(camera, name, &value)) << name;
    return value ? value : "";
}

}   // namespace orvo::test
