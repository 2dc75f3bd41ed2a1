#pragma once

#include <cstdint>

#include "sim/cameralib/ParameterFunctions.h"

/// The binary interface of the GigE Vision camera library, as its callers import it by ordinal. A status is 0
/// on success and one of CameraStatus (sim/seam/Camera.h) on failure, and what is handed out by a pointer is
/// then left alone. Handles are numbers, never given out twice. Any thread may call anything at any time.
extern "C" {

int32_t Eth_openBoard(int32_t boardIndex, int32_t zero, uint64_t* library);
/// Ends the handles of its cameras too, which disconnects them.
int32_t Eth_closeBoard(uint64_t library);

// Searching. `mask` has a bit for each of the ports 0 to 31; what lies above is always searched. How long a
// search takes is bounded in a real library; here `bound` means nothing.
int32_t Eth_scanPorts(uint64_t library, uint32_t mask, uint32_t bound);
/// How many the latest scan found, or negative.
int32_t Eth_getCameraCount(uint64_t library, uint32_t port);
/// Each call gives a new handle, for Eth_releaseCamera.
int32_t Eth_getCameraByIndex(uint64_t library, uint32_t port, uint32_t index, uint64_t* camera);

/// What Eth_getCameraInfo hands out, valid until the next call with that camera.
struct EthCameraInfo {
    uint32_t port;
    uint32_t index;
    char serial[24];
    char name[64];   // for display
};

/// Null for a handle that has ended, and for a camera that doesn't answer.
const void* Eth_getCameraInfo(uint64_t camera);
/// The handle ends, whatever the camera says.
int32_t Eth_releaseCamera(uint64_t camera);
int32_t Eth_connectCamera(uint64_t camera);
/// The handle ends if it succeeds.
int32_t Eth_disconnectCamera(uint64_t camera);
int32_t Eth_startAcquisition(uint64_t camera);
int32_t Eth_stopAcquisition(uint64_t camera);

// Parameters, by the names of the GenICam Standard Features Naming Convention. A text that is handed out is
// the library's until the next call with that camera.
ORVO_SIM_DECLARE_PARAMETER_FUNCTIONS(Eth)

/// Never null.
const char* Eth_getErrorDescription(int32_t code);

// Action commands. Registers: actionDeviceKey, actionGroupKeyN and actionGroupMaskN for N from 0 to 127, all
// of one word; `one` is the number of words. `all` 0xFFFFFFFF reaches every camera of the board, whatever
// `port` says.
int32_t Eth_setCameraRegister(uint64_t camera, const char* name, const uint32_t* value, uint32_t one);
int32_t Eth_sendActionCommand(uint64_t library, uint32_t port, uint32_t all, uint32_t deviceKey,
                              uint32_t groupKey, uint32_t groupMask);
}
