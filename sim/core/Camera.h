#pragma once

#include <cstddef>
#include <cstdint>

/// The seam between `orvo_sim`, which has the cameras, and the libraries that reach them. As plain as Core.h.
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
    Gone = -3014,             // it was there, and doesn't answer any more
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

/// A simulated camera behind one port of a board. Whoever connects it names himself by the handle that he has
/// of it; only those who have connected it reach its parameters. Threads: any.
class Camera {
public:
    /// Answers whether it is there, without a call to it.
    virtual bool isPresent() const = 0;
    virtual bool isConnected() const = 0;

    // Each of these is a call to the camera, after a number of which it may have been told to vanish.
    virtual CameraStatus identify(CameraIdentity& identity) = 0;
    /// Again by the same handle is no error. `alone`: nobody else may have connected it.
    virtual CameraStatus connect(uint64_t handle, bool alone) = 0;
    virtual CameraStatus disconnect(uint64_t handle) = 0;
    virtual CameraStatus setStarted(uint64_t handle, bool started) = 0;
    virtual CameraStatus read(uint64_t handle, const char* name, ParameterType type,
                              ParameterValue& value) = 0;
    virtual CameraStatus write(uint64_t handle, const char* name, ParameterType type,
                               const ParameterValue& value) = 0;
    virtual CameraStatus execute(uint64_t handle, const char* name) = 0;
    virtual CameraStatus writeRegister(uint64_t handle, const char* name, uint32_t value) = 0;

    /// The handle ends, whatever the camera would say: no call to it.
    virtual void forget(uint64_t handle) = 0;

protected:
    ~Camera() = default;
};

}   // namespace orvo::sim
