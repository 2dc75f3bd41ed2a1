#ifndef ORVO_SIM_DISPATCHER_H
#define ORVO_SIM_DISPATCHER_H

/// The wheel of the simulated logging dispatcher, in plain C: a program that hosts it sets levels while
/// loggers are in use, makes the dispatcher go away, and reads back what was written. Exported by the library
/// `common-logging-dispatcher` itself: load that file, which is the very one that its client loads, and find
/// the functions with the pointer types at the end.
///
/// Levels:  as its clients count them, 1 (trace) to 6 (critical), and 7 for off.
/// Threads: every function may be called on any thread at any time.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Sets the level of the logger of that name, now and for the life of the process, also before anybody asked
/// for it. Whoever is attached is told of the change on the calling thread.
void OrvoSimLog_setLevel(const char* logger, int32_t level);

/// The dispatcher goes away: tells everybody who is attached, on the calling thread, and knows them no more.
/// Others can attach later.
void OrvoSimLog_goAway(void);

/// How many are attached.
uint64_t OrvoSimLog_countAttached(void);

/// Capturing, off at first: 1 and every record that arrives, whatever its level, is kept in memory too; 0 and
/// no more are kept.
void OrvoSimLog_capture(int32_t on);

/// A captured record. The texts live until OrvoSimLog_clear().
typedef struct OrvoSimLog_Record {
    int64_t id; /* of the logger, from 1 */
    int32_t level;
    uint32_t word; /* the two words that came with it */
    uint64_t longWord;
    const char* logger; /* its name */
    const char* text;
} OrvoSimLog_Record;

/// The record at position `index`, from 0, in the order of arrival. Returns 1, or 0 behind the last.
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
