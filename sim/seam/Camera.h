#pragma once

#include <cstddef>
#include <cstdint>

/// The seam between `orvo_sim`, which has the cameras, and the libraries that reach them; as plain as Core.h.
namespace orvo::sim {

/// What a call to a camera comes to: the error numbers of both camera libraries.
enum class CameraStatus : int32_t {
    Ok = 0,
    InternalFault = -3001,   // of the simulator: out of memory
    NullArgument = -3002,
    WrongArgument = -3003,
    NoBoard = -3010,          // at that index, with that handle, or none of the library's kind
    UnknownLibrary = -3011,   // no handle, or one that has ended
    UnknownCamera = -3012,    // likewise
    NoCamera = -3013,         // at that port and index
    Gone = -3014,             // it was there, and no longer answers
    InUse = -3015,            // somebody else has connected it
    NotConnected = -3016,
    UnknownParameter = -3020,
    WrongType = -3021,
    NotWritable = -3022,
    NotReadable = -3023,
    OutOfRange = -3024,
    OffStep = -3025,   // between two values that the camera takes
    UnknownEntry = -3026,
    UnknownRegister = -3030,
};

/// What a CameraStatus says to a person; never null, never freed.
const char* cameraErrorTextOf(int32_t status);

/// The interface types of camera parameters.
enum class ParameterType : int32_t { Integer, Boolean, Float, String, Enumeration, Command };

/// A parameter's value; the parameter's type says which member counts.
struct ParameterValue {
    static constexpr size_t kTextSize = 512;

    int64_t integer = 0;   // a boolean is 0 or 1
    double real = 0;
    char text[kTextSize] = {};   // ends with a NUL; of an enumeration: the entry
};

/// How a camera presents itself. Each text ends with a NUL.
struct CameraIdentity {
    char name[64] = {};   // for display
    char vendor[64] = {};
    char model[64] = {};
    char serial[64] = {};
};

/// A GigE Vision action command.
struct ActionCommand {
    uint32_t deviceKey = 0;
    uint32_t groupKey = 0;
    uint32_t groupMask = 0;
};

/// What a camera shows: its scene, or what it makes itself.
enum class CameraPattern : int32_t {
    Scene,
    Black,
    White,
    HorizontalRamp,
    VerticalRamp,
    HorizontalRampMoving,
    VerticalRampMoving,
    DiagonalRampMoving,
    ColorBar
};

/// How a camera's parameters make a picture of its scene.
struct CameraView {
    // The part of the sensor, in pixels.
    uint32_t width = 0, height = 0, xOffset = 0, yOffset = 0;
    uint32_t sensorWidth = 0;
    CameraPattern pattern = CameraPattern::Scene;
    bool isGrey = false;
    bool isReversedX = false, isReversedY = false;
    double brightness = 1;   // by which the scene's levels are multiplied

    bool operator==(const CameraView&) const = default;
};

/// One picture that a camera has taken.
struct Exposure {
    CameraView view;
    int64_t timeNs = 0;   // of the steady clock
};

/// The board's end of a camera's cable, for one run of a DMA. What the camera sends is not kept: a board
/// takes it, or it is lost.
class CameraStream {
public:
    /// Waits for the camera's next picture. False when the stream is cancelled. Threads: one.
    virtual bool await(Exposure& exposure) = 0;
    /// await() returns, now and from now on. Threads: any.
    virtual void cancel() = 0;
    /// Destroys the stream. Not while await() runs.
    virtual void close() = 0;

protected:
    ~CameraStream() = default;
};

/// A simulated camera at one port of a board. Callers are told apart by their handles of the camera; only a
/// handle that has connected it reaches its parameters. Threads: any.
class Camera {
public:
    /// Whether it is there; this is no call to the camera.
    virtual bool isPresent() const = 0;
    virtual bool isConnected() const = 0;

    // Calls to the camera: it may vanish after a number of these.
    virtual CameraStatus identify(CameraIdentity& identity) = 0;
    /// Connecting again by the same handle is no error. `alone`: no other handle may have connected it.
    virtual CameraStatus connect(uint64_t handle, bool alone) = 0;
    virtual CameraStatus disconnect(uint64_t handle) = 0;
    virtual CameraStatus setStarted(uint64_t handle, bool started) = 0;
    virtual CameraStatus read(uint64_t handle, const char* name, ParameterType type,
                              ParameterValue& value) = 0;
    virtual CameraStatus write(uint64_t handle, const char* name, ParameterType type,
                               const ParameterValue& value) = 0;
    virtual CameraStatus execute(uint64_t handle, const char* name) = 0;
    virtual CameraStatus writeRegister(uint64_t handle, const char* name, uint32_t value) = 0;

    // The board's side. Nothing is sent before kFirstExposure after the stream was opened.
    virtual CameraStream* openStream() = 0;
    /// As a picture would be that was taken now, whatever state the camera is in.
    virtual CameraView view() const = 0;
    /// Pictures per second; 0 for a camera that waits for triggers.
    virtual double pictureRate() const = 0;

    /// The handle ends. This is no call to the camera, and always succeeds.
    virtual void forget(uint64_t handle) = 0;

protected:
    ~Camera() = default;
};

}   // namespace orvo::sim
