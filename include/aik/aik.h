#ifndef AIK_AIK_H
#define AIK_AIK_H

/// The acquisition interface of OrvoCognexAdapter as a host sees it: fifteen exports, three records. Plain C
/// (C99 and later, C++11 and later), 64-bit, little-endian; a host is written against this header alone.
///
/// Finding:  load the adapter by its full path, and have the loader look for its neighbours beside it (on
///           Windows LOAD_WITH_ALTERED_SEARCH_PATH). Look the exports up by name or ordinal; each has a
///           pointer type here, `AIK_` and its name. Hosts that link define AIK_LINKED and get prototypes.
///           The adapter loads `bin/brdlib5` below its installation directory at the first
///           GetVideoChannel(), and a machine without that file ends the process there: look before you call.
/// Order:    GetVideoChannel() comes before everything else and, once it failed with "index is not valid"
///           for index 0, is followed by one ReleaseVideoChannel(), which fails and lets go of the boards.
///           Then, for each channel: features and SetupCommonParams(), StartAcquisition(), pictures,
///           StopAcquisition(), ReleaseVideoChannel(). The release that leaves no channel open shuts
///           everything down, also channels that are about to be opened: so open all before releasing any.
/// Scope:    a channel is one DMA of one applet process on one board. Channels of one applet process start
///           and stop together, and SetupCommonParams() sets the geometry of its own channel but rebuilds
///           the rings of all of them. Neither names nor ids tell which channels share a process; the
///           process number inside a name counts anew on each board.
/// Threads:  any thread may enter. Alone, with no other call under way: GetVideoChannel(),
///           ReleaseVideoChannel(). One at a time among the channels of one board: SetupCommonParams(),
///           StartAcquisition(), StopAcquisition(), ExecuteCommand(), WriteValue(), and ReadValue() of
///           camera features, which they share: "InitializeCameraConnector" and all behind it in the list. Not
///           beside image functions or ReadValue() of any channel of the same applet process:
///           SetupCommonParams(), which takes the rings away. Not beside those of the same channel:
///           WriteValue(), which may replace what they work with, also while the channel stands. One at a time
///           on one channel, each channel on a thread of its own if you like: GetImage(),
///           WaitForIntegration(), GetImageAttributes(), ReadValue() of anything else. Start and stop may run
///           beside waiting image functions.
/// Failures: every function returns AIK_OK or AIK_FAILED, and tells a failure as a text in `errstr`, at least
///           AIK_ERRSTR_SIZE bytes, NUL-terminated, cut to 255 bytes. `errstr` is left alone by a success,
///           so it holds the text of an earlier failure. A null `errstr` is itself a failure, without text.
///           A failed call leaves open channels open.
/// Waiting:  no call waits longer than 7 ms for a picture. A longer wait is the host's loop.

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Constants ------------------------------------------------------------------------------------------- */

/// What every function returns.
#define AIK_OK 0     /* success, and for image functions also: no picture yet */
#define AIK_FAILED 1 /* the reason stands in errstr */

/// What the image functions store through `acqResult`: 0 before they start, another word at their end.
#define AIK_ACQ_COMPLETED 0x0000u /* done */
#define AIK_ACQ_PENDING 0x1000u   /* no picture yet: ask again; the function returned AIK_OK */
#define AIK_ACQ_FAILED 0x2000u    /* the function returned AIK_FAILED */

/// What GetFeatureType() stores.
#define AIK_TYPE_ENUMERATION 1u
#define AIK_TYPE_INTEGER 2u
#define AIK_TYPE_FLOAT 3u
#define AIK_TYPE_COMMAND 4u
#define AIK_TYPE_BOOLEAN 5u
#define AIK_TYPE_STRING 6u
#define AIK_TYPE_NONE 0xFFFFFFFFu /* -1: the feature was never given a type */

/// What GetFeatureAttr() can be asked for.
#define AIK_ATTR_DESCRIPTION 1u
#define AIK_ATTR_READABLE 2u  /* "True" or "False", whether or not the feature is available now */
#define AIK_ATTR_WRITEABLE 3u /* likewise */
#define AIK_ATTR_EMPTY 4u     /* always an empty text */

/// Pixel formats. The code alone does not tell the number of bytes: AIK_PIXEL_PLANAR stands for pictures of
/// 3 and of 6 bytes a pixel, AIK_PIXEL_OTHER for 5 and for 1. And only of formats of 3 bytes does the feature
/// "Transformation" make planes that are a picture: it splits the bytes of any format by threes, and the code
/// of all but those of 3 and of 6 bytes stays what it was.
#define AIK_PIXEL_OTHER (-1) /* none of the others: 5 bytes of grey, or an unknown format of 1 byte */
#define AIK_PIXEL_MONO8 0    /* 1 byte: grey */
#define AIK_PIXEL_BGRX8 1    /* 4 bytes: blue, green, red, 255 */
#define AIK_PIXEL_PLANAR 2   /* "RGB8PackedToPlanar" is on: of 3 bytes planes of red, green and blue */
#define AIK_PIXEL_BGR8 7     /* 3 bytes: blue, green, red */
#define AIK_PIXEL_MONO16 9   /* 2 bytes: grey, little-endian */
#define AIK_PIXEL_BGR16 11   /* 6 bytes: blue, green, red, 16 bits each, little-endian */
#define AIK_MAX_BYTES_PER_PIXEL 6

/// Sizes in bytes of the buffers that a host hands in for texts, NUL included.
#define AIK_ERRSTR_SIZE 256
#define AIK_VALUE_SIZE 256 /* ReadValue() */
#define AIK_NAME_SIZE 257  /* GetFeatureName(), GetFeatureAttr() */
#define AIK_ENUM_SIZE 257  /* GetValidEnum(), zeroed by the host before each call */

/* Records --------------------------------------------------------------------------------------------- */

typedef struct csAIK_ChannelRecord csAIK_ChannelRecord;
typedef struct csAIK_CommonParams csAIK_CommonParams;
typedef struct csAIK_ImageAttributes csAIK_ImageAttributes;

/* The exports, by ordinal ----------------------------------------------------------------------------- */

/// 1: Opens the channel at position `index`, from 0, and fills `channel`. The first call finds the boards and
/// loads their applets, which may take seconds; an applet file is named by "ORVO_COGNEX_APPLET_" and the
/// board's number in the environment. Positions are dense: "index is not valid" ends the list. A board that
/// could not be brought up is a channel too: the call succeeds with `failed` set, and every use of that
/// channel fails with the reason. An open channel fails with "Handle already exists". Zero the record first:
/// after any other failure a `channelID` that is not 0 names a channel that is open and must be released.
typedef int32_t (*AIK_GetVideoChannel)(char* errstr, int32_t index, csAIK_ChannelRecord* channel);

/// 2: Sets width, height and offsets of the channel, in pixels, and rebuilds the rings of all channels of its
/// applet process. Pictures that were not fetched are gone. An offset that the applet refuses is no failure:
/// the old one stays. Needed once before the first StartAcquisition(). A GetImage() that already waits on
/// another thread while a larger ring is built may write a picture of the new size: give it memory for that.
typedef int32_t (*AIK_SetupCommonParams)(char* errstr, int64_t channelID, const csAIK_CommonParams* params);

/// 3: Closes the channel. The release that leaves none open, also one that fails ("Invalid channelID"), stops
/// what still runs and closes all boards; the next GetVideoChannel() begins anew, with ids from 1.
typedef int32_t (*AIK_ReleaseVideoChannel)(char* errstr, int64_t channelID);

/// 10: Copies the current picture to `image`, or the oldest that waits, and gives its buffer back to the
/// board. Waits up to 7 ms, then answers AIK_ACQ_PENDING with nothing written. Width x height x
/// AIK_MAX_BYTES_PER_PIXEL bytes suffice, with the width and height of the last ring build, that is of the
/// last SetupCommonParams() or write of "BufferCount": a geometry changed by other means changes the
/// attributes at once and the bytes written only then. Rows stand from the top, without padding. Works after
/// StopAcquisition() too, as long as pictures are left. Under "OldestFirst" it fails with a number and
/// " images lost due buffer overflow" from the first loss to the next start.
typedef int32_t (*AIK_GetImage)(char* errstr, int64_t channelID, void* image, uint32_t* acqResult);

/// 11: Waits up to 7 ms for a picture, which stays the current one until GetImage(). AIK_ACQ_PENDING: none
/// came. Fails with "Acquisition is not running" after StopAcquisition(). Found by name or ordinal only:
/// the channel record has no pointer to it.
typedef int32_t (*AIK_WaitForIntegration)(char* errstr, int64_t channelID, uint32_t* acqResult);

/// 12: Describes the picture that GetImage() copies next; waits for it as WaitForIntegration() does, also
/// while nothing runs. Fails with "Acquisistion is not setup" while no buffer of the ring is free for the
/// board, which a ring of one always is and a full one under "OldestFirst": fetch, then ask again. Fails with
/// lost pictures as GetImage() does. After a failure half-way the fields stored so far remain.
typedef int32_t (*AIK_GetImageAttributes)(char* errstr, int64_t channelID, csAIK_ImageAttributes* attributes,
                                          uint32_t* acqResult);

/// 20: Starts all channels of the applet process. Those that run already are left alone. Pictures of an
/// earlier run that were not fetched are still there. Cameras are not started: they have features for that.
typedef int32_t (*AIK_StartAcquisition)(char* errstr, int64_t channelID);

/// 21: Stops all channels of the applet process. A second call, on any of them, fails with "Acquisition is
/// not running". Nobody who waits is woken.
typedef int32_t (*AIK_StopAcquisition)(char* errstr, int64_t channelID);

/// 22: Executes a command feature. There is no harmless way to ask whether one is available.
typedef int32_t (*AIK_ExecuteCommand)(char* errstr, int64_t channelID, const char* feature);

/// 23: Writes a feature's value as text, NUL-terminated, into `value`, AIK_VALUE_SIZE bytes.
typedef int32_t (*AIK_ReadValue)(char* errstr, int64_t channelID, const char* feature, char* value);

/// 24: Sets a feature from text. Numbers are decimal, with a point, and what follows them is ignored; names
/// and enumeration entries are compared exactly; booleans are "True" and "False". "CameraBooleanValue" alone
/// takes them crosswise: "True" switches off what then reads "False", and every other text switches it on.
/// "AcquisitionStrategy" and "Transformation" can't be changed while the channel runs.
typedef int32_t (*AIK_WriteValue)(char* errstr, int64_t channelID, const char* feature, const char* value);

/// 30: Writes the name of the feature at position `index`, from 0, into `name`, AIK_NAME_SIZE bytes: at most
/// 256 bytes of text, and the NUL at the text's full length. "Cannot find feature with the given index" ends
/// the list.
typedef int32_t (*AIK_GetFeatureName)(char* errstr, int64_t channelID, uint32_t index, char* name);

/// 31: Stores the feature's type, one of AIK_TYPE_...
typedef int32_t (*AIK_GetFeatureType)(char* errstr, int64_t channelID, const char* feature, uint32_t* type);

/// 32: Writes what `attr`, one of AIK_ATTR_..., asks for into `result`, AIK_NAME_SIZE bytes, with the limits
/// of GetFeatureName().
typedef int32_t (*AIK_GetFeatureAttr)(char* errstr, int64_t channelID, const char* feature, uint32_t attr,
                                      char* result);

/// 33: Writes the enumeration entry whose value is `index` into `value`: at most 256 bytes and NO NUL, so
/// hand in AIK_ENUM_SIZE zeroed bytes. `index` is the entry's value and not a position: "Invalid enum index!"
/// is a gap or the end.
typedef int32_t (*AIK_GetValidEnum)(char* errstr, int64_t channelID, const char* feature, uint32_t index,
                                    char* value);

/// The whole interface: X(name, ordinal) for each export. The build makes the `.def` from these rows, and hosts
/// that load the adapter at run time can make their look-ups from them.
#define AIK_EXPORTS(X)                                                                                       \
    X(GetVideoChannel, 1)                                                                                    \
    X(SetupCommonParams, 2)                                                                                  \
    X(ReleaseVideoChannel, 3)                                                                                \
    X(GetImage, 10)                                                                                          \
    X(WaitForIntegration, 11)                                                                                \
    X(GetImageAttributes, 12)                                                                                \
    X(StartAcquisition, 20)                                                                                  \
    X(StopAcquisition, 21)                                                                                   \
    X(ExecuteCommand, 22)                                                                                    \
    X(ReadValue, 23)                                                                                         \
    X(WriteValue, 24)                                                                                        \
    X(GetFeatureName, 30)                                                                                    \
    X(GetFeatureType, 31)                                                                                    \
    X(GetFeatureAttr, 32)                                                                                    \
    X(GetValidEnum, 33)

/* The records, laid out ------------------------------------------------------------------------------- */

/// Filled by GetVideoChannel(). The whole record must be there whatever `size` says: the size decides only
/// whether the five pointers from `getFeatureName` on are stored.
struct csAIK_ChannelRecord {
    int32_t size; /* in: sizeof(csAIK_ChannelRecord) */
    uint8_t reserved004[4];
    int64_t channelID; /* the handle for all later calls; never 0 */
    AIK_SetupCommonParams setupCommonParams;
    AIK_GetImageAttributes getImageAttributes;
    uint8_t reserved020[8];
    AIK_GetImage getImage;
    AIK_StartAcquisition startAcquisition;
    AIK_StopAcquisition stopAcquisition;
    AIK_ExecuteCommand executeCommand;
    AIK_ReadValue readValue;
    AIK_WriteValue writeValue;
    char name[256];      /* board name, " process: ", " dma: " */
    char boardText[256]; /* what the board says of itself */
    uint8_t reserved258[24];
    int32_t width; /* in pixels, now; 0 for a failed channel */
    int32_t height;
    uint8_t reserved278[8];
    AIK_GetFeatureName getFeatureName; /* this and the next four: only if size > 0x260 */
    AIK_GetFeatureType getFeatureType;
    AIK_GetValidEnum getValidEnum;
    AIK_GetFeatureAttr getFeatureAttr;
    AIK_ReleaseVideoChannel releaseVideoChannel;
    int32_t failed; /* 1: every use of the channel fails with the reason */
    uint8_t reserved2AC[4];
};

/// Read by SetupCommonParams(): nothing but these four fields.
struct csAIK_CommonParams {
    uint8_t reserved000[0x2C];
    uint32_t xOffset; /* all in pixels */
    uint32_t yOffset;
    uint32_t width;
    uint32_t height;
};

/// Filled by GetImageAttributes(). Geometry is what the board holds now, in pixels.
struct csAIK_ImageAttributes {
    int32_t size; /* in: sizeof(csAIK_ImageAttributes) */
    uint32_t width;
    uint32_t height;
    uint32_t widthAgain;
    int32_t pixelFormat; /* one of AIK_PIXEL_... */
    uint32_t xOffset;    /* 0 where the board has no offsets */
    uint32_t yOffset;
    uint32_t imageWidth; /* width, height and offsets once more */
    uint32_t imageHeight;
    uint32_t imageXOffset;
    uint32_t imageYOffset;
    uint8_t reserved02C[4];
    uint64_t timestamp; /* only if size > 0x2C: of the picture, "TimestampFrequency" ticks a second */
};

#if defined(__cplusplus)
#define AIK_FACT(name, fact) static_assert(fact, #name)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define AIK_FACT(name, fact) _Static_assert(fact, #name)
#else
#define AIK_FACT(name, fact) typedef char AIK_fact_##name[(fact) ? 1 : -1]
#endif
#define AIK_AT(offset, record, field) AIK_FACT(record##_##field, offsetof(record, field) == (offset))
#define AIK_SIZE(bytes, record) AIK_FACT(record##_whole, sizeof(record) == (bytes))

AIK_FACT(pointers_have_64_bits, sizeof(void*) == 8);

AIK_AT(0x000, csAIK_ChannelRecord, size);
AIK_AT(0x008, csAIK_ChannelRecord, channelID);
AIK_AT(0x010, csAIK_ChannelRecord, setupCommonParams);
AIK_AT(0x018, csAIK_ChannelRecord, getImageAttributes);
AIK_AT(0x028, csAIK_ChannelRecord, getImage);
AIK_AT(0x030, csAIK_ChannelRecord, startAcquisition);
AIK_AT(0x038, csAIK_ChannelRecord, stopAcquisition);
AIK_AT(0x040, csAIK_ChannelRecord, executeCommand);
AIK_AT(0x048, csAIK_ChannelRecord, readValue);
AIK_AT(0x050, csAIK_ChannelRecord, writeValue);
AIK_AT(0x058, csAIK_ChannelRecord, name);
AIK_AT(0x158, csAIK_ChannelRecord, boardText);
AIK_AT(0x270, csAIK_ChannelRecord, width);
AIK_AT(0x274, csAIK_ChannelRecord, height);
AIK_AT(0x280, csAIK_ChannelRecord, getFeatureName);
AIK_AT(0x288, csAIK_ChannelRecord, getFeatureType);
AIK_AT(0x290, csAIK_ChannelRecord, getValidEnum);
AIK_AT(0x298, csAIK_ChannelRecord, getFeatureAttr);
AIK_AT(0x2A0, csAIK_ChannelRecord, releaseVideoChannel);
AIK_AT(0x2A8, csAIK_ChannelRecord, failed);
AIK_SIZE(0x2B0, csAIK_ChannelRecord);

AIK_AT(0x2C, csAIK_CommonParams, xOffset);
AIK_AT(0x30, csAIK_CommonParams, yOffset);
AIK_AT(0x34, csAIK_CommonParams, width);
AIK_AT(0x38, csAIK_CommonParams, height);
AIK_SIZE(0x3C, csAIK_CommonParams);

AIK_AT(0x00, csAIK_ImageAttributes, size);
AIK_AT(0x04, csAIK_ImageAttributes, width);
AIK_AT(0x08, csAIK_ImageAttributes, height);
AIK_AT(0x0C, csAIK_ImageAttributes, widthAgain);
AIK_AT(0x10, csAIK_ImageAttributes, pixelFormat);
AIK_AT(0x14, csAIK_ImageAttributes, xOffset);
AIK_AT(0x18, csAIK_ImageAttributes, yOffset);
AIK_AT(0x1C, csAIK_ImageAttributes, imageWidth);
AIK_AT(0x20, csAIK_ImageAttributes, imageHeight);
AIK_AT(0x24, csAIK_ImageAttributes, imageXOffset);
AIK_AT(0x28, csAIK_ImageAttributes, imageYOffset);
AIK_AT(0x30, csAIK_ImageAttributes, timestamp);
AIK_SIZE(0x38, csAIK_ImageAttributes);

/* Prototypes, for hosts that link with the import library ---------------------------------------------- */

#ifdef AIK_LINKED
int32_t GetVideoChannel(char* errstr, int32_t index, csAIK_ChannelRecord* channel);
int32_t SetupCommonParams(char* errstr, int64_t channelID, const csAIK_CommonParams* params);
int32_t ReleaseVideoChannel(char* errstr, int64_t channelID);
int32_t GetImage(char* errstr, int64_t channelID, void* image, uint32_t* acqResult);
int32_t WaitForIntegration(char* errstr, int64_t channelID, uint32_t* acqResult);
int32_t GetImageAttributes(char* errstr, int64_t channelID, csAIK_ImageAttributes* attributes,
                           uint32_t* acqResult);
int32_t StartAcquisition(char* errstr, int64_t channelID);
int32_t StopAcquisition(char* errstr, int64_t channelID);
int32_t ExecuteCommand(char* errstr, int64_t channelID, const char* feature);
int32_t ReadValue(char* errstr, int64_t channelID, const char* feature, char* value);
int32_t WriteValue(char* errstr, int64_t channelID, const char* feature, const char* value);
int32_t GetFeatureName(char* errstr, int64_t channelID, uint32_t index, char* name);
int32_t GetFeatureType(char* errstr, int64_t channelID, const char* feature, uint32_t* type);
int32_t GetFeatureAttr(char* errstr, int64_t channelID, const char* feature, uint32_t attr, char* result);
int32_t GetValidEnum(char* errstr, int64_t channelID, const char* feature, uint32_t index, char* value);
#endif

#ifdef __cplusplus
}
#endif

#endif
