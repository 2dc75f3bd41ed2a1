#pragma once

#include <cstdint>

#include "sim/cameralib/ParameterFunctions.h"

/// The binary interface of the GenICam access library, as its callers import it by ordinal. A status is 0
/// on success and one of CameraStatus (sim/seam/Camera.h) on failure, and what is handed out by a pointer is
/// then left alone. Handles are numbers, never given out twice. Any thread may call anything at any time.
extern "C" {

/// `applet` is the handle under which the board library has the board open.
int32_t Ogc_openBoard(uint64_t applet, int32_t zero, uint64_t* library);
/// Ends the handles of its cameras too, which disconnects them.
int32_t Ogc_closeBoard(uint64_t library);

// Searching. `mask` has a bit for each of the ports 0 to 7; what lies above is always searched. How long a
// search takes is bounded in a real library; here `bound` means nothing.
int32_t Ogc_scanPorts(uint64_t library, uint32_t mask, uint32_t bound, uint32_t zero);
/// How many cameras the latest scan found; 0 if the handle has ended.
int32_t Ogc_getFoundCount(uint64_t library);
/// `port` counts what was found, from 0, by rising numbers of the board's ports. Each call gives a new
/// handle.
int32_t Ogc_getCameraOnPort(uint64_t library, uint32_t port, uint64_t* camera);

/// What Ogc_getCameraInfo hands out, valid until the next call with that camera.
struct OgcCameraInfo {
    const char* model;
    const char* name;   // for display
};

/// Null for a handle that has ended, and for a camera that doesn't answer.
const void* Ogc_getCameraInfo(uint64_t camera);
/// Succeeds also for a camera that is connected. It sends pictures from then on.
int32_t Ogc_connectCamera(uint64_t camera);

// Parameters, by the names of the GenICam Standard Features Naming Convention. A text that is handed out is
// the library's until the next call with that camera.
ORVO_SIM_DECLARE_PARAMETER_FUNCTIONS(Ogc)
}
