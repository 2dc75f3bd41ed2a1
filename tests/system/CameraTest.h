#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/system/SystemTest.h"

namespace orvo::test {

/// What tells the two families of cameras apart: the boards that have them, and the library that reaches
/// them.
struct CameraFamily {
    const char* name;
    int32_t boardType;
    const char* library;   // how the names of its functions begin
    const char* errorPrefix;
};
inline constexpr CameraFamily kGigEVision{"GigEVision", 2897, "Eth_", "eth error code: "};
inline constexpr CameraFamily kGenICam{"GenICam", 1872, "Ogc_", "ogc error code: "};

inline std::ostream& operator<<(std::ostream& out, const CameraFamily& family)
{
    return out << family.name;
}

inline const char* const kCameraCalls = "Eth_* Ogc_*";

/// One board with a process of two DMAs, and its cameras. The board's channels share their cameras.
class CameraTest : public SystemTest {
protected:
    /// Describes board 0, with cameras at some of its ports, and opens its two channels.
    void openBoard(const CameraFamily& family, const std::vector<int>& cameras = {0, 1},
                   const std::vector<int>& ports = {0, 1});
    /// Describes the boards 0 and 1, one of each family, with so many channels and this camera at port 0.
    void describeBothFamilies(const json& camera, const std::vector<json>& dmas);
    /// Opens the camera library, finds the cameras, and forgets the calls that were made.
    void connect();

    Answer execute(const char* feature) { return host.execute(id, feature); }
    Answer read(const char* feature) { return host.read(id, feature); }
    Answer write(const char* feature, const char* value) { return host.write(id, feature, value); }
    /// Reads or writes a parameter of the selected camera.
    Answer read(const char* feature, const char* key);
    Answer write(const char* feature, const char* key, const char* value);

    static json cameraAt(int port) { return {{"port", port}}; }

    int64_t id = 0;
    int64_t neighbour = 0;
};

/// The same for each family.
class EitherFamily : public CameraTest, public testing::WithParamInterface<CameraFamily> {
protected:
    static bool isGigE() { return GetParam().boardType == kGigEVision.boardType; }
    /// A function of the family's library.
    static std::string call(const std::string& rest) { return GetParam().library + rest; }
    static std::string libraryError(int number) { return GetParam().errorPrefix + std::to_string(number); }
};

/// Runs the tests of a suite for both families.
#define ORVO_FOR_BOTH_FAMILIES(suite)                                                                        \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::Values(kGigEVision, kGenICam),                                \
                             testing::PrintToStringParamName())

}   // namespace orvo::test
