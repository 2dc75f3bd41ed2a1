#ifndef ORVO_SIM_H
#define ORVO_SIM_H

/// The wheel of the simulator, in plain C: a program that hosts the simulated boards takes it to deliver
/// pictures by hand, to make chosen library calls fail or wait, and to read the journal of all calls and
/// the ledger of all pictures. Exported by the library `orvo_sim`, which every stand-in loads; link it, or
/// find the functions at run time with the pointer types at the end.
///
/// Threads: every function may be called on any thread at any time, also inside an image callback, but
///          for what OrvoSim_deliver() and OrvoSim_callBack() say. None needs an initialised library.
/// Texts:   handed in: read during the call, and null counts as empty. Handed out: copied into the
///          caller's buffer, always with a NUL, cut if the buffer is too small. The result is the whole
///          size in bytes with the NUL, so a call with a size of 0 tells how much is needed.
/// Waiting: a timeout is in milliseconds. Give a generous one: it only bounds a test that has failed.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Back to the beginning: the script is empty and whoever it held goes on, the journal is empty and
/// records again up to its default limit, the ledger is empty, manual mode is off, messages are on, cameras
/// that vanished are back. Boards that are open, and DMAs that run, are not touched.
void OrvoSim_reset(void);

/// Messages to standard error, such as what is wrong with a boards file: 0 switches them off.
void OrvoSim_setMessages(int32_t on);

// Delivering by hand

enum {
    ORVO_SIM_NOT_RUNNING = -1,   // no such board or DMA, or it isn't running; for callBack: no callback
    ORVO_SIM_BUSY = -2           // asked from inside the very callback that would have to end first
};

/// Manual mode: 1 and no run delivers by itself, 0 and every run does. A run keeps the mode in which
/// `Brd_AcquireEx` found it. In manual mode time stamps don't come from a clock: the n-th picture produced
/// in a run has n times the picture time (1 / picturesPerSecond of the applet, 1 ms if that is 0).
void OrvoSim_setManual(int32_t manual);

/// Produces the next `count` pictures of a DMA (its id, on the board of that index) on the calling thread:
/// fills the block, calls the callback, comes back when the last callback has ended. Returns how many were
/// delivered. The others found no free block, met a drop that the script of faults asks for, or came after
/// the end of a run that was stopped meanwhile or had a limit: the ledger tells which. Works in manual mode
/// and beside a run that delivers by itself; callbacks of one DMA never overlap. Negative:
/// ORVO_SIM_NOT_RUNNING, or ORVO_SIM_BUSY from inside a callback of this DMA.
int32_t OrvoSim_deliver(uint32_t boardIndex, uint32_t dma, uint32_t count);

/// Calls the registered callback with exactly this number on the calling thread and changes nothing else:
/// no block is filled, no picture counted. Works also while the DMA stands still, as long as a callback is
/// registered. Returns 0, or negative as OrvoSim_deliver().
int32_t OrvoSim_callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber);

/// Waits until the DMA has ended at least `count` callbacks with pictures since the ledger began. Returns 1,
/// or 0 after the timeout.
int32_t OrvoSim_waitForDelivered(uint32_t boardIndex, uint32_t dma, uint64_t count, uint32_t timeoutMs);

// The script: what chosen calls do

// A `call` is chosen by its function's name, and by any of its arguments as the journal writes them:
// "Brd_AddMem", "Brd_getParameter id=3080", "Brd_AcquireEx board=1 dma=0". `nth` counts the calls that match
// from now on: 1 is the next one, 0 is every one. Rules are tried in the order in which they were made; each
// counts for itself. A call that several rules meet is held, is slow, and takes the answer of the first
// that has one.

/// The call answers `result` and does nothing else; 0 is a call that claims success and did nothing. A
/// function that returns a pointer returns null, and `result` becomes the board's last error number.
/// `Brd_stopAcquireEx` stops all the same, and a function without result does its work all the same.
void OrvoSim_answer(const char* call, uint32_t nth, int64_t result);

/// As OrvoSim_answer(), and the call hands out these bytes: into its `value` or `buffer` (as many as there
/// are: the length word is checked and set as ever), or, from a function that returns a pointer, as the
/// address of a copy that stays for good.
void OrvoSim_answerWith(const char* call, uint32_t nth, int64_t result, const void* bytes, uint64_t size);

/// The call takes this much longer, before it has any effect.
void OrvoSim_slow(const char* call, uint32_t nth, uint32_t milliseconds);

enum {
    ORVO_SIM_AT_ENTRY = 0,   // before the call has any effect
    ORVO_SIM_AT_EXIT = 1     // after its effect, before it returns
};

/// The call waits until OrvoSim_letGo(). No lock is held meanwhile: all other calls work.
void OrvoSim_hold(const char* call, uint32_t nth, int32_t where);

/// Waits until a thread is held by the rule that was made with the same text. Returns 1, or 0 after the
/// timeout.
int32_t OrvoSim_waitUntilHeld(const char* call, uint32_t timeoutMs);

/// Ends the holding rules that were made with the same text: whoever waits there goes on, nobody else stops.
void OrvoSim_letGo(const char* call);

/// Ends all rules, those of the boards file too; whoever is held goes on.
void OrvoSim_clearScript(void);

// Cameras

/// The camera behind that port of the board answers `calls` further calls of the camera libraries that name
/// it, and then none: each fails, and no search finds it; 0: it is gone at once. Connections that are open
/// stay so for the hosts. Returns 1, or 0 if no camera is described there.
int32_t OrvoSim_vanishCamera(uint32_t boardIndex, uint32_t port, uint64_t calls);

/// It answers again. If it was gone it is as after a loss of power: not connected, not started, and its
/// parameters are those at first. Returns 1, or 0 if no camera is described there.
int32_t OrvoSim_restoreCamera(uint32_t boardIndex, uint32_t port);

// The journal: one line a call

// `Brd_AddMem board=0 buffer=b0 size=307200 index=0 head=h1 -> 0`: name, arguments in their order, result.
// The arguments bear the names of the prototypes, a memory head is `head`. Lines stand in the order in which
// the calls began; ` ...` stands in the place of the result while a call is under way.
//
// Symbols stand for addresses: a board handle is its board's index, a memory head is h1, h2, ... in the order
// of making since the library's life began, a block is b and the index under which its head has it, null is
// `null`, and whatever is no longer known is `?`. Texts stand in double quotes. A callback record is
// `control=set` or `control=null`, a buffer to be filled `buffer=set` or `buffer=null`. The image number of
// picture n is 1000000000 + n.
//
// What a call hands out stands behind the result by the name of its argument, if the result is 0:
// `Brd_getParameter board=0 id=100 dma=0 -> 0 value=640`. A value that goes in as well, as the word of ids
// 3080 and 3090 does, stands in both places. A length word is `length=256`; with a buffer of null it isn't
// read, and stands behind the result alone. Brd_FreeLibraries has neither arguments nor result.
//
// A camera library's handle is its board's index. Its cameras are c1, c2, ... in the order in which a life's
// handles are given out, of each library for itself: `Eth_getCameraByIndex library=0 port=0 index=0 -> 0
// camera=c1`. A handle that has ended is `?`, and 0 is `null`. A camera's record is `set` or `null`.

/// The journal as text, each line ended by a line feed. `filter`: empty for all lines, or function names with
/// blanks between. A name keeps its lines, a name with a minus in front drops them, and a star at the end
/// stands for any rest: "Brd_AddMem Brd_DelMem", "-Brd_get* -Brd_InitLibraries". `from` skips that many
/// lines of the whole journal first.
uint64_t OrvoSim_readJournal(const char* filter, uint64_t from, char* buffer, uint64_t size);

/// The number of lines of the whole journal.
uint64_t OrvoSim_countJournal(void);

/// Forgets all lines.
void OrvoSim_clearJournal(void);

/// Records so many lines and then no more; 0 records nothing, and the calls then cost nothing extra. At
/// first 10000.
void OrvoSim_limitJournal(uint64_t lines);

// The ledger: what became of every picture

/// The account of one DMA since the first `Brd_InitLibraries` of this life of the library, or since
/// OrvoSim_reset(). It can still be read after the last `Brd_FreeLibraries`.
/// produced = delivered + droppedNoBlock + droppedByFault; a picture counts when its callback has ended.
typedef struct OrvoSim_Ledger {
    uint64_t runs;   // successful calls of Brd_AcquireEx
    uint64_t produced;
    uint64_t delivered;
    uint64_t droppedNoBlock;   // status 30 counts these too, and starts anew with each run
    uint64_t droppedByFault;
    double askedRate;   // pictures per second of the latest run; 0: as the ring allows, or as triggers come
    double heldRate;    // pictures per second produced in it, first to last; 0 below two pictures
} OrvoSim_Ledger;

/// Returns 1, or 0 with `ledger` left alone for a DMA that never ran.
int32_t OrvoSim_readLedger(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger* ledger);

/// The whole ledger as JSON, as the boards file's "ledger" has it written.
uint64_t OrvoSim_writeLedger(char* buffer, uint64_t size);

// Pointer types, for programs that load the library at run time

typedef void (*OrvoSim_reset_t)(void);
typedef void (*OrvoSim_setMessages_t)(int32_t on);
typedef void (*OrvoSim_setManual_t)(int32_t manual);
typedef int32_t (*OrvoSim_deliver_t)(uint32_t boardIndex, uint32_t dma, uint32_t count);
typedef int32_t (*OrvoSim_callBack_t)(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber);
typedef int32_t (*OrvoSim_waitForDelivered_t)(uint32_t boardIndex, uint32_t dma, uint64_t count,
                                              uint32_t timeoutMs);
typedef void (*OrvoSim_answer_t)(const char* call, uint32_t nth, int64_t result);
typedef void (*OrvoSim_answerWith_t)(const char* call, uint32_t nth, int64_t result, const void* bytes,
                                     uint64_t size);
typedef void (*OrvoSim_slow_t)(const char* call, uint32_t nth, uint32_t milliseconds);
typedef void (*OrvoSim_hold_t)(const char* call, uint32_t nth, int32_t where);
typedef int32_t (*OrvoSim_waitUntilHeld_t)(const char* call, uint32_t timeoutMs);
typedef void (*OrvoSim_letGo_t)(const char* call);
typedef void (*OrvoSim_clearScript_t)(void);
typedef int32_t (*OrvoSim_vanishCamera_t)(uint32_t boardIndex, uint32_t port, uint64_t calls);
typedef int32_t (*OrvoSim_restoreCamera_t)(uint32_t boardIndex, uint32_t port);
typedef uint64_t (*OrvoSim_readJournal_t)(const char* filter, uint64_t from, char* buffer, uint64_t size);
typedef uint64_t (*OrvoSim_countJournal_t)(void);
typedef void (*OrvoSim_clearJournal_t)(void);
typedef void (*OrvoSim_limitJournal_t)(uint64_t lines);
typedef int32_t (*OrvoSim_readLedger_t)(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger* ledger);
typedef uint64_t (*OrvoSim_writeLedger_t)(char* buffer, uint64_t size);

#ifdef __cplusplus
}
#endif

#endif
