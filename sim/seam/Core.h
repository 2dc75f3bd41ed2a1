#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "sim/seam/Camera.h"

/// The seam between `orvo_sim` and the stand-ins. Each of these libraries has its own C++ run time, so only
/// plain things cross: virtual calls, structs without destructors, views that are read during the call. No
/// exceptions, no containers, no memory that the other side would free. All objects that references lead to
/// live until the process ends.
namespace orvo::sim {

/// What became of a picture.
enum class Fate { Delivered, NoBlock, Fault };

/// The ledger's page for one DMA. Threads: any.
class DmaAccount {
public:
    /// `askedRate` in pictures per second, 0 for as fast as the ring allows or triggers come.
    virtual void beginRun(double askedRate) = 0;
    /// A delivered picture is entered when its callback has ended.
    virtual void enter(Fate fate) = 0;

protected:
    ~DmaAccount() = default;
};

/// What goes wrong with the pictures of a board, as the boards file says. "Every nth" counts the pictures of
/// a run from 1; 0 is never.
struct PictureFaults {
    uint64_t dropEvery = 0;
    uint64_t negativeEvery = 0;   // the callback gets negativeNumber in the place of a picture
    int64_t negativeNumber = 0;
    std::chrono::nanoseconds jitter{0};   // a picture comes up to this much later than its time
    uint64_t seed = 0;                    // of the jitter
};

/// One board of the boards file.
struct BoardDescription {
    int32_t type = 0;
    char serial[64] = {};   // ends with a NUL
    PictureFaults faults;
};

/// The first picture of a run never comes earlier than this after the start: the caller must first know that
/// the run has begun.
inline constexpr std::chrono::milliseconds kFirstExposure{20};

/// What the control interface asks of the board library. Results are those of OrvoSim_deliver() and
/// OrvoSim_callBack().
class PictureDelivery {
public:
    virtual int32_t deliver(uint32_t boardIndex, uint32_t dma, uint32_t count) = 0;
    virtual int32_t callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber) = 0;

protected:
    ~PictureDelivery() = default;
};

/// A watched call on its way through the library: what the script decided, and where the journal has it.
struct CallPass {
    bool answered = false;   // the call answers `result` and has no effect
    int64_t result = 0;
    const std::byte* bytes = nullptr;   // that an answered call hands out, null for none
    size_t size = 0;                    // of `bytes`
    uint64_t journalLine = 0;           // the rest is the recorder's own
    uint64_t journalEpoch = 0;
    void* exitRule = nullptr;
};

/// Journal and script, as the stand-ins' functions meet them. Threads: any.
class CallRecorder {
public:
    /// Whether the journal or the script want calls. If not, don't call the other two.
    virtual bool isWatching() const = 0;
    /// The call begins. `arguments` as the journal has them. Waits as long as the script says.
    virtual CallPass enter(std::string_view function, std::string_view arguments) = 0;
    /// The call ends. `rest`: result and what is handed out, as the journal has it. Waits likewise.
    virtual void leave(const CallPass& pass, std::string_view rest) = 0;

protected:
    ~CallRecorder() = default;
};

/// What the stand-ins share. A session of the boards lasts from the first Brd_InitLibraries to the last
/// Brd_FreeLibraries. Threads: any; the host keeps the beginning and the end of a session apart from all
/// other calls.
class Core {
public:
    /// Reads the boards file again and begins a new ledger.
    virtual void beginSession() = 0;
    /// Writes what the boards file asks for.
    virtual void endSession() = 0;

    /// Copies the description of the board at `index`. False if there is none.
    virtual bool findBoard(uint32_t index, BoardDescription& board) const = 0;
    /// What is wrong with the boards file, empty if nothing. Good until the next session begins.
    virtual std::string_view boardsFileError() const = 0;

    virtual CallRecorder& calls() = 0;
    virtual DmaAccount& account(uint32_t boardIndex, uint32_t dma) = 0;
    /// Whether runs that begin now deliver by hand only.
    virtual bool isManual() const = 0;
    virtual void setDelivery(PictureDelivery& delivery) = 0;
    /// Writes a line to standard error, unless messages are off.
    virtual void say(std::string_view message) = 0;

    /// Counts the sessions from 1; 0 before the first.
    virtual uint64_t session() const = 0;
    /// The handle under which the board at `index` is open, 0 when it closes.
    virtual void setBoardHandle(uint32_t index, uint64_t handle) = 0;
    /// The index of the board that is open under that handle. False if there is none.
    virtual bool findOpenBoard(uint64_t handle, uint32_t& index) const = 0;

    static constexpr uint32_t kMostPorts = 256;   // of a board that can have a camera
    /// The camera that is described at a port, whether it answers or not; null for none.
    virtual Camera* camera(uint32_t boardIndex, uint32_t port) = 0;
    /// Sends an action command to the camera at one port, or to all of the board's: those whose keys match are
    /// triggered at the same moment.
    virtual void sendToPort(uint32_t boardIndex, uint32_t port, const ActionCommand& command) = 0;
    virtual void sendToAll(uint32_t boardIndex, const ActionCommand& command) = 0;

    /// What the applet library's `Info` returns next: its arguments don't say which board is meant.
    virtual void setAppletInfo(int32_t answer) = 0;
    virtual int32_t appletInfo() const = 0;

protected:
    ~Core() = default;
};

}   // namespace orvo::sim

extern "C" orvo::sim::Core* orvo_sim_core();
