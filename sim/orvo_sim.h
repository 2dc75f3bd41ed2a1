#ifndef ORVO_SIM_H
#define ORVO_SIM_H

/// The control interface of the simulator, in plain C. A program that runs on the simulated boards uses it to
/// deliver pictures by hand, to make chosen library calls fail or wait, and to read the journal of all calls
/// and the ledger of all pictures. The library `orvo_sim` exports it, and every stand-in loads that library:
/// link it, or find the functions at run time with the pointer types at the end.
///
/// Threads: every function may be called on any thread at any time, also inside an image callback;
///          OrvoSim_deliver() and OrvoSim_callBack() have one exception. No function needs an initialised
///          library.
/// Texts:   a text passed in is read during the call; null counts as empty. A text returned is copied into
///          the caller's buffer, always with a NUL, and cut if the buffer is too small. The result is the
///          full size in bytes, the NUL included: call with a size of 0 to learn how much is needed.
/// Waiting: timeouts are in milliseconds. Choose a generous one: it only limits a test that has failed.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Resets the simulator. The script is emptied and calls that it held continue; the journal is emptied and
/// records again, up to its default limit; the ledger is emptied; manual mode is off; messages are on; cameras
/// that vanished are back. Open boards and running DMAs are not touched.
void OrvoSim_reset(void);

/// Switches the messages to standard error, such as what is wrong with a boards file, on (1) or off (0).
void OrvoSim_setMessages(int32_t on);

// Delivering by hand

enum {
    ORVO_SIM_NOT_RUNNING = -1,   // no such board or DMA, or it isn't running; for callBack: no callback
    ORVO_SIM_BUSY = -2           // asked from inside the very callback that would have to end first
};

/// Switches manual mode on (1): runs deliver only what OrvoSim_deliver() asks for; or off (0): runs deliver by
/// themselves. A run keeps the mode that was set when `Brd_AcquireEx` started it. In manual mode time stamps
/// don't come from a clock: the n-th picture produced in a run has n times the picture time (1 /
/// picturesPerSecond of the applet, 1 ms if that is 0).
void OrvoSim_setManual(int32_t manual);

/// Produces the next `count` pictures of a DMA (its id, on the board of that index) on the calling thread:
/// fills a block, calls the callback, and returns when the last callback has ended. Returns how many were
/// delivered. The others found no free block, were dropped by a fault of the boards file, or came after the
/// run had ended because it was stopped or had a limit; the ledger tells which. Works in manual mode, and
/// beside a run that delivers by itself; callbacks of one DMA never overlap. Returns ORVO_SIM_NOT_RUNNING, or
/// ORVO_SIM_BUSY from inside a callback of this DMA.
int32_t OrvoSim_deliver(uint32_t boardIndex, uint32_t dma, uint32_t count);

/// Calls the registered callback with exactly this number on the calling thread and changes nothing else:
/// no block is filled, no picture is counted. Works also while the DMA is stopped, as long as a callback is
/// registered. Returns 0, or a negative number as OrvoSim_deliver() does.
int32_t OrvoSim_callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber);

/// Waits until at least `count` pictures of the DMA are delivered, their callbacks ended, since the ledger
/// began. Returns 1, or 0 after the timeout.
int32_t OrvoSim_waitForDelivered(uint32_t boardIndex, uint32_t dma, uint64_t count, uint32_t timeoutMs);

// The script: what chosen calls do

// `call` chooses calls by the function's name and any of the arguments as the journal writes them:
// "Brd_AddMem", "Brd_getParameter id=3080", "Brd_AcquireEx board=1 dma=0". `nth` counts the matching calls
// from now on: 1 is the next one, 0 means all of them. Each rule counts for itself, and rules apply in the
// order in which they were made. Several rules may match one call: every hold and every delay applies, and
// the first answer. A rule whose function no library exports never applies; standard error says so, also while
// messages are off.

/// The call returns `result` and does nothing else; with 0 it claims success and has done nothing. A
/// function that returns a pointer returns null, and `result` becomes the board's last error number.
/// `Brd_stopAcquireEx` and `Brd_FreeLibraries` do their work nevertheless.
void OrvoSim_answer(const char* call, uint32_t nth, int64_t result);

/// As OrvoSim_answer(), and the call hands out these bytes: it writes them to its `value` or `buffer` (all of
/// them; the length word is checked and set as usual), or, if it returns a pointer, returns the address of a
/// copy that is never freed.
void OrvoSim_answerWith(const char* call, uint32_t nth, int64_t result, const void* bytes, uint64_t size);

/// The call takes this much longer, before it has any effect.
void OrvoSim_slow(const char* call, uint32_t nth, uint32_t milliseconds);

enum {
    ORVO_SIM_AT_ENTRY = 0,   // before the call has any effect
    ORVO_SIM_AT_EXIT = 1     // after its effect, before it returns
};

/// The call waits until OrvoSim_letGo(). No lock is held while it waits: all other calls work.
void OrvoSim_hold(const char* call, uint32_t nth, int32_t where);

/// Waits until the rule made with the same text holds a thread. Returns 1, or 0 after the timeout.
int32_t OrvoSim_waitUntilHeld(const char* call, uint32_t timeoutMs);

/// Ends the holding rules made with the same text: the calls that they hold continue, and they hold no more.
void OrvoSim_letGo(const char* call);

/// Ends all rules, those of the boards file included; the calls that they hold continue.
void OrvoSim_clearScript(void);

// Cameras

/// The camera at that port of the board answers this many more calls of the camera libraries, and then none:
/// each call fails, and no search finds it. With 0 it is gone at once. Handles and connections of the hosts
/// stay open. Returns 1, or 0 if no camera is described there.
int32_t OrvoSim_vanishCamera(uint32_t boardIndex, uint32_t port, uint64_t calls);

/// The camera answers again. If it was gone, it is as after a loss of power: not connected, not started, with
/// its initial parameters. Returns 1, or 0 if no camera is described there.
int32_t OrvoSim_restoreCamera(uint32_t boardIndex, uint32_t port);

// The journal: one line for each call

// `Brd_AddMem board=0 buffer=b0 size=307200 index=0 head=h1 -> 0`: the name, the arguments in their order,
// the result. The arguments have the names of the prototypes; a memory head is `head`. Lines are in the order
// in which the calls began. While a call is under way, its line ends with ` ...` instead of a result.
//
// Handles and addresses appear as symbols. A board handle is its board's index. A memory head is h1, h2, ...
// in the order in which the session made them; a session of the library lasts from its first
// Brd_InitLibraries to its last Brd_FreeLibraries. A block is b and its index in its memory head. Null is
// `null`; what is not, or no longer, known is `?`. Texts are in double quotes. A callback record is
// `control=set` or `control=null`, a buffer to be filled is `buffer=set` or `buffer=null`. The image number
// of picture n is 1000000000 + n.
//
// If the result is 0, what the call hands out follows it, by the name of its argument:
// `Brd_getParameter board=0 id=100 dma=0 -> 0 value=640`. A value that is passed in as well, such as the
// position for ids 3080 and 3090, appears in both places. A length word is `length=256`; with a null buffer
// it isn't read, and appears after the result only. Brd_FreeLibraries has neither arguments nor a result.
//
// A camera library's handle is its board's index. Its cameras are c1, c2, ... in the order in which a session
// gives out their handles; each library counts its own: `Eth_getCameraByIndex library=0 port=0 index=0 -> 0
// camera=c1`. A handle that has ended is `?`, and 0 is `null`. A camera's record is `set` or `null`.

/// The journal as text, each line ended by a line feed. `filter` is empty for all lines, or holds function
/// names separated by blanks: a name keeps its lines, a name after a minus drops them, and a star at the end
/// matches any rest: "Brd_AddMem Brd_DelMem", "-Brd_get* -Brd_InitLibraries". `from` first skips that many
/// lines of the whole journal.
uint64_t OrvoSim_readJournal(const char* filter, uint64_t from, char* buffer, uint64_t size);

/// The number of lines of the whole journal.
uint64_t OrvoSim_countJournal(void);

/// Removes all lines.
void OrvoSim_clearJournal(void);

/// Records at most this many lines; with 0 it records nothing, and calls then cost nothing extra. The default
/// is 10000.
void OrvoSim_limitJournal(uint64_t lines);

// The ledger: what became of every picture

/// The account of one DMA since the session of the library began, or since OrvoSim_reset(). It can still be
/// read after the session has ended.
/// produced = delivered + droppedNoBlock + droppedByFault; a picture counts when its callback has ended.
typedef struct OrvoSim_Ledger {
    uint64_t runs;   // successful calls of Brd_AcquireEx
    uint64_t produced;
    uint64_t delivered;
    uint64_t droppedNoBlock;   // status 30 counts these as well, from 0 in each run
    uint64_t droppedByFault;
    double askedRate;   // pictures per second, of the latest run; 0: as the ring allows, or as triggers come
    double heldRate;    // pictures per second that it produced, first to last; 0 below two pictures
} OrvoSim_Ledger;

/// Returns 1, or 0 for a DMA that never ran; `ledger` is then left alone.
int32_t OrvoSim_readLedger(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger* ledger);

/// The whole ledger as JSON, as it is written to the file that the boards file names.
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
