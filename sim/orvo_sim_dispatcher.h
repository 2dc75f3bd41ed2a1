#ifndef ORVO_SIM_DISPATCHER_H
#define ORVO_SIM_DISPATCHER_H

/// The control interface of the simulated logging dispatcher, in plain C. A program uses it to set levels
/// while loggers are in use, to make the dispatcher go away, and to read back what was written. The library
/// `common-logging-dispatcher` itself exports it: load the same file as its clients do, and find the functions
/// with the pointer types at the end.
///
/// Levels:  as its clients count them, 1 (trace) to 6 (critical), and 7 for off.
/// Threads: every function may be called on any thread at any time.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Sets the level of the logger of that name until the process ends; nobody needs to have asked for the
/// logger yet. Tells all attached clients of the change, on the calling thread.
void OrvoSimLog_setLevel(const char* logger, int32_t level);

/// The dispatcher goes away: it tells all attached clients, on the calling thread, and forgets them. Clients
/// can attach again later.
void OrvoSimLog_goAway(void);

/// The number of attached clients.
uint64_t OrvoSimLog_countAttached(void);

/// Switches capturing on (1): every record that arrives, whatever its level, is also kept in memory; or off
/// (0), as it is at first.
void OrvoSimLog_capture(int32_t on);

/// A captured record. The texts live until OrvoSimLog_clear().
typedef struct OrvoSimLog_Record {
    int64_t id; /* of the logger, from 1 */
    int32_t level;
    uint32_t word; /* the two numbers that came with it */
    uint64_t longWord;
    const char* logger; /* its name */
    const char* text;
} OrvoSimLog_Record;

/// The record at position `index`, from 0, in the order of arrival. Returns 1, or 0 after the last.
int32_t OrvoSimLog_read(uint64_t index, OrvoSimLog_Record* record);

/// Forgets the captured records.
void OrvoSimLog_clear(void);

/* Pointer types, for programs that load the library at run time ---------------------------------------- */

typedef void (*OrvoSimLog_setLevel_t)(const char* logger, int32_t level);
typedef void (*OrvoSimLog_goAway_t)(void);
typedef uint64_t (*OrvoSimLog_countAttached_t)(void);
typedef void (*OrvoSimLog_capture_t)(int32_t on);
typedef int32_t (*OrvoSimLog_read_t)(uint64_t index, OrvoSimLog_Record* record);
typedef void (*OrvoSimLog_clear_t)(void);

#ifdef __cplusplus
}
#endif

#endif
