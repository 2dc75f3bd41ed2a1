#ifndef AIK_AIK_H
#define AIK_AIK_H

/// The acquisition interface of OrvoCognexAdapter: fifteen exports and three records, in plain C (C99 and
/// later, C++11 and later), 64-bit, little-endian. A host can be written against this header alone.
///
/// Loading
///   - Load the adapter by its full path, and have the loader search the adapter's folder for the libraries
///     it needs (on Windows: LOAD_WITH_ALTERED_SEARCH_PATH).
///   - Look up the exports by name or ordinal; the pointer type of each is `AIK_` and its name. A host that
///     links with the import library defines AIK_LINKED and gets prototypes.
///   - The first GetVideoChannel() loads `brdlib5` from the folder `bin` of the adapter's installation. If
///     that file is missing, the process ends at that call, so check for it first.
///
/// Channels
///   A channel is one DMA of one applet process on one board. Channels of the same applet process start and
///   stop together, and SetupCommonParams() on one of them rebuilds the image buffers of all of them. Neither
///   names nor ids tell which channels share a process: boards of the same type have the same name, and the
///   process number in a channel's name starts at 0 on each board.
///   Nor does anything tell which camera feeds which channel. To find out, start all channels of a board,
///   then let one camera send at a time: start it alone or, where cameras send without a start, set the
///   parameter `TriggerMode` of all others to `On`. "FrameCountSinceLastStart" rises on the channels that
///   this camera feeds.
///
/// Order of calls
///   1. GetVideoChannel() for every channel that the host uses.
///   2. Per channel: features as needed, then SetupCommonParams(). Once per applet process is enough if the
///      other channels keep the size that they have.
///   3. StartAcquisition(), once per applet process.
///   4. In a loop, the image functions: WaitForIntegration(), GetImageAttributes(), GetImage(). The first two
///      are optional.
///   5. StopAcquisition(), once per applet process.
///   6. ReleaseVideoChannel() for every channel.
///   The release that leaves no channel open closes all boards, so open every channel before you release any.
///
///   While no channel is open, before the first GetVideoChannel() or after the last release, call no other
///   function. Such a stray call fails with "Invalid channelID" and leaves an empty list of channels behind.
///   From then on every GetVideoChannel() fails with "index is not valid", until ReleaseVideoChannel() is
///   called once, with any id: that call fails too, but the next GetVideoChannel() searches for boards again.
///   The same holds when there was no board at first: to search again, call ReleaseVideoChannel() once.
///
/// Lost pictures
///   Pictures carry no number. Two sources tell a host what it missed:
///   - "FrameCountSinceLastStart" counts the pictures that reached the adapter. A start sets it to 0, a stop
///     leaves it alone. Stop, then call GetImage() until it reports AIK_ACQ_PENDING: what was counted and not
///     fetched was skipped by the strategy. Pictures that an earlier run left in the ring were counted there.
///   - Time stamps. If the camera runs at a fixed rate, an interval of n picture times between two fetched
///     pictures means that n - 1 are missing. Those that the strategy did not skip never reached the adapter:
///     the board had no free buffer, or they were lost between camera and board. With a trigger, compare with
///     the number of triggers instead.
///   "OldestFirst" skips no picture. If the board loses one for want of a buffer, GetImage() and
///   GetImageAttributes() fail until the next start. Losses before the board show in the time stamps alone.
///
/// Board parameters
///   Write the name of a parameter to "BrdFeatureKey", then use "BrdIntValue", "BrdFloatValue" or
///   "BrdStringValue". Each channel has its own values. All applets have the integers BRD_WIDTH and
///   BRD_HEIGHT, in pixels, and BRD_FORMAT; most have BRD_XOFFSET and BRD_YOFFSET. The applet's documentation
///   names the others. After a change of size or format call SetupCommonParams(), which builds the image
///   buffers anew.
///   BRD_FORMAT is 1 for AIK_PIXEL_MONO16, 2 for AIK_PIXEL_BGR8, 3 for AIK_PIXEL_MONO8, 4 for
///   AIK_PIXEL_BGRX8, 5 for 5 bytes of grey, 6 for AIK_PIXEL_BGR16.
///
/// Threads
///   Any thread may call any function. The adapter does not check the following limits; the host keeps them.
///   - GetVideoChannel(), ReleaseVideoChannel(): no other call may be in progress.
///   - SetupCommonParams(), StartAcquisition(), StopAcquisition(), ExecuteCommand(), WriteValue(): one at a
///     time per board. The same holds for ReadValue() of a camera feature, because all channels of a board
///     share its cameras. Camera features are "InitializeCameraConnector" and all that follow it in the
///     feature list.
///   - The image functions and ReadValue() of any other feature: one at a time per channel. Each channel may
///     have a thread of its own.
///   - SetupCommonParams() must not overlap image functions or ReadValue() on any channel of its applet
///     process. It replaces the image buffers: a GetImage() that already waits would copy a picture of the
///     new size into memory that the host allocated for the old size.
///   - WriteValue() must not overlap image functions or ReadValue() on its own channel, even a stopped one.
///     It may replace what they use: "BufferCount", for one, replaces the image buffers.
///   - StartAcquisition() and StopAcquisition() may overlap image functions.
///   - GetFeatureName(), GetFeatureType(), GetFeatureAttr(), GetValidEnum(): no further limit.
///
/// Failures
///   Every function returns AIK_OK or AIK_FAILED. A failure writes its reason to `errstr`, which must have
///   room for AIK_ERRSTR_SIZE bytes: at most 255 bytes of text, then a NUL. A success does not touch
///   `errstr`, so it may still hold the text of an earlier failure. A null `errstr` is itself a failure,
///   without a text. Open channels stay open when a call fails.
///
/// Waiting
///   No call waits longer than 7 ms for a picture. To wait longer, call again.

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Constants ------------------------------------------------------------------------------------------- */

/// What every function returns.
#define AIK_OK 0     /* success; from an image function also "no picture yet", see acqResult */
#define AIK_FAILED 1 /* errstr holds the reason */

/// What the image functions store in `acqResult`. Read it after the function has returned.
#define AIK_ACQ_COMPLETED 0x0000u /* done */
#define AIK_ACQ_PENDING 0x1000u   /* no picture yet, call again; the function returned AIK_OK */
#define AIK_ACQ_FAILED 0x2000u    /* the function returned AIK_FAILED */

/// What GetFeatureType() stores.
#define AIK_TYPE_ENUMERATION 1u
#define AIK_TYPE_INTEGER 2u
#define AIK_TYPE_FLOAT 3u
#define AIK_TYPE_COMMAND 4u
#define AIK_TYPE_BOOLEAN 5u
#define AIK_TYPE_STRING 6u
#define AIK_TYPE_NONE 0xFFFFFFFFu /* -1: the feature has no type */

/// The attributes that GetFeatureAttr() can read.
#define AIK_ATTR_DESCRIPTION 1u
#define AIK_ATTR_READABLE 2u  /* "True" or "False"; says nothing about whether the feature is available now */
#define AIK_ATTR_WRITEABLE 3u /* likewise */
#define AIK_ATTR_EMPTY 4u     /* an empty text for every feature */

/// Pixel formats, as GetImageAttributes() reports them. The code alone does not give the number of bytes per
/// pixel: AIK_PIXEL_PLANAR covers 3 and 6 bytes, AIK_PIXEL_OTHER covers 1 and 5.
/// With the feature "Transformation" set to "RGB8PackedToPlanar", the adapter splits the bytes of any format
/// by threes, and only from a format of 3 bytes per pixel does that give colour planes. The code changes for
/// the formats of 3 and 6 bytes only.
#define AIK_PIXEL_OTHER (-1) /* any other: 5 bytes of grey, or a format unknown to the adapter, 1 byte */
#define AIK_PIXEL_MONO8 0    /* 1 byte: grey */
#define AIK_PIXEL_BGRX8 1    /* 4 bytes: blue, green, red, 255 */
#define AIK_PIXEL_PLANAR 2   /* with "RGB8PackedToPlanar"; from 3 bytes: a red, a green and a blue plane */
#define AIK_PIXEL_BGR8 7     /* 3 bytes: blue, green, red */
#define AIK_PIXEL_MONO16 9   /* 2 bytes: grey, little-endian */
#define AIK_PIXEL_BGR16 11   /* 6 bytes: blue, green, red, 16 bits each, little-endian */
#define AIK_MAX_BYTES_PER_PIXEL 6

/// Sizes in bytes of the text buffers that a host passes in, NUL included.
#define AIK_ERRSTR_SIZE 256
#define AIK_VALUE_SIZE 256 /* ReadValue() */
#define AIK_NAME_SIZE 257  /* GetFeatureName(), GetFeatureAttr() */
#define AIK_ENUM_SIZE 257  /* GetValidEnum(); zero the buffer before each call */

/* Records --------------------------------------------------------------------------------------------- */

typedef struct csAIK_ChannelRecord csAIK_ChannelRecord;
typedef struct csAIK_CommonParams csAIK_CommonParams;
typedef struct csAIK_ImageAttributes csAIK_ImageAttributes;

/* The exports, by ordinal ----------------------------------------------------------------------------- */

/// 1: Opens the channel at position `index`, counted from 0, and fills `channel`. The first call finds the
/// boards and loads their applets, which may take seconds. The environment variable "ORVO_COGNEX_APPLET_"
/// with the board's number names the board's applet file. Positions have no gaps: "index is not valid" ends
/// the list. A board that cannot be used has one channel too: the call succeeds and sets `failed`, and every
/// call on that channel except ReleaseVideoChannel() fails with the reason. Opening an open channel fails
/// with "Handle already exists". Zero the record first: if after any other failure its `channelID` is not 0,
/// that channel is open and must be released.
typedef int32_t (*AIK_GetVideoChannel)(char* errstr, int32_t index, csAIK_ChannelRecord* channel);

/// 2: Sets the channel's width, height and offsets, in pixels, and rebuilds the rings of image buffers of all
/// channels of its applet process. Required before the first StartAcquisition(). Pictures that were not
/// fetched are lost. Channels that run are stopped for the rebuild and started again, with their frame
/// counters at 0; cameras are left alone. A size that the applet refuses fails with "Cannot set BRD_WIDTH" or
/// "Cannot set BRD_HEIGHT" before any ring is touched. If the applet refuses an offset, the call still
/// succeeds and the old offset stays; after a refused X offset the Y offset is not set either. A rebuild that
/// fails leaves its channel stopped and the channels after it as they were: call again before the next start.
typedef int32_t (*AIK_SetupCommonParams)(char* errstr, int64_t channelID, const csAIK_CommonParams* params);

/// 3: Closes the channel. If no channel is open afterwards, the adapter stops what still runs and closes all
/// boards; the next GetVideoChannel() starts from nothing and counts ids from 1 again. This also holds for a
/// call that fails with "Invalid channelID".
typedef int32_t (*AIK_ReleaseVideoChannel)(char* errstr, int64_t channelID);

/// 10: Copies the current picture to `image`, or the oldest waiting one if none is current, and gives its
/// buffer back to the board. Waits up to 7 ms for a picture, then reports AIK_ACQ_PENDING and writes nothing.
/// Works after StopAcquisition() too, as long as pictures are left.
/// Rows run from top to bottom, without padding. `image` needs room for width x height x
/// AIK_MAX_BYTES_PER_PIXEL bytes at most. Width and height are those of the last ring build, that is, of the
/// last SetupCommonParams() or write of "BufferCount". If the geometry is changed by other means,
/// GetImageAttributes() reports it at once, but the size of the pictures changes only with the next ring
/// build. With the strategy "OldestFirst", every call fails from the first lost picture until the next start,
/// with the number of lost pictures followed by " images lost due buffer overflow".
typedef int32_t (*AIK_GetImage)(char* errstr, int64_t channelID, void* image, uint32_t* acqResult);

/// 11: Waits up to 7 ms for a picture, which is then the current one until GetImage() fetches it.
/// AIK_ACQ_PENDING: none came. Fails with "Acquisition is not running" unless the channel runs. Look it up by
/// name or ordinal: the channel record has no pointer to it.
typedef int32_t (*AIK_WaitForIntegration)(char* errstr, int64_t channelID, uint32_t* acqResult);

/// 12: Describes the picture that GetImage() copies next. Waits for it as WaitForIntegration() does, but also
/// while the channel is stopped. Fails with "Acquisistion is not setup" while every buffer of the ring holds
/// a picture that was not fetched. With a ring of one buffer this happens at every picture, with a longer one
/// if the host falls behind under "OldestFirst". Call GetImage(), then ask again. After lost pictures it
/// fails as GetImage() does. A call that fails or reports AIK_ACQ_PENDING half-way leaves the fields that it
/// has already stored.
typedef int32_t (*AIK_GetImageAttributes)(char* errstr, int64_t channelID, csAIK_ImageAttributes* attributes,
                                          uint32_t* acqResult);

/// 20: Starts all channels of the applet process; those that already run are left alone. Pictures of an
/// earlier run that were not fetched are kept. Cameras are not started: the command feature
/// "StartAcquisition" does that.
typedef int32_t (*AIK_StartAcquisition)(char* errstr, int64_t channelID);

/// 21: Stops all channels of the applet process. A second call, on any of them, fails with "Acquisition is
/// not running". Image functions that wait are not woken: they wait out their 7 ms.
typedef int32_t (*AIK_StopAcquisition)(char* errstr, int64_t channelID);

/// 22: Executes a command feature. Only executing a command shows whether it is available.
typedef int32_t (*AIK_ExecuteCommand)(char* errstr, int64_t channelID, const char* feature);

/// 23: Writes the feature's value as NUL-terminated text into `value`, AIK_VALUE_SIZE bytes.
typedef int32_t (*AIK_ReadValue)(char* errstr, int64_t channelID, const char* feature, char* value);

/// 24: Sets a feature from text. Numbers are decimal, with a point, and what follows the number is ignored;
/// names and enumeration entries must match exactly; booleans are "True" and "False". "CameraBooleanValue"
/// alone is inverted: writing "True" switches the parameter off, so that it reads "False", and any other text
/// switches it on. "AcquisitionStrategy" and "Transformation" cannot be changed while the channel runs.
typedef int32_t (*AIK_WriteValue)(char* errstr, int64_t channelID, const char* feature, const char* value);

/// 30: Writes the name of the feature at position `index`, counted from 0, into `name`, AIK_NAME_SIZE bytes.
/// At most 256 bytes of text are copied, and the NUL goes where the whole text would end. "Cannot find
/// feature with the given index" ends the list.
typedef int32_t (*AIK_GetFeatureName)(char* errstr, int64_t channelID, uint32_t index, char* name);

/// 31: Stores the type of the feature, one of AIK_TYPE_..., in `type`.
typedef int32_t (*AIK_GetFeatureType)(char* errstr, int64_t channelID, const char* feature, uint32_t* type);

/// 32: Writes the attribute `attr` of the feature, one of AIK_ATTR_..., into `result`, AIK_NAME_SIZE bytes,
/// with the limits of GetFeatureName().
typedef int32_t (*AIK_GetFeatureAttr)(char* errstr, int64_t channelID, const char* feature, uint32_t attr,
                                      char* result);

/// 33: Writes the name of the enumeration entry with the value `index` into `value`: at most 256 bytes and NO
/// NUL, so pass AIK_ENUM_SIZE zeroed bytes. `index` is the value of an entry, not its position: "Invalid enum
/// index!" means a gap or the end.
typedef int32_t (*AIK_GetValidEnum)(char* errstr, int64_t channelID, const char* feature, uint32_t index,
                                    char* value);

/// The whole interface as a list, X(name, ordinal) for each export. The build generates the `.def` from it; a
/// host that loads the adapter at run time can generate its look-ups from it.
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

/// Filled by GetVideoChannel(). Pass a whole record whatever `size` says: `size` only decides whether the
/// five pointers from `getFeatureName` on are stored.
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
    char name[256];      /* "<board name> process: <number> dma: <number>" */
    char boardText[256]; /* the board's description of itself */
    uint8_t reserved258[24];
    int32_t width; /* in pixels, at the time of the call; 0 for a failed channel */
    int32_t height;
    uint8_t reserved278[8];
    AIK_GetFeatureName getFeatureName; /* this and the next four are stored only if size > 0x260 */
    AIK_GetFeatureType getFeatureType;
    AIK_GetValidEnum getValidEnum;
    AIK_GetFeatureAttr getFeatureAttr;
    AIK_ReleaseVideoChannel releaseVideoChannel;
    int32_t failed; /* 1: every use of the channel fails with the reason */
    uint8_t reserved2AC[4];
};

/// Read by SetupCommonParams(), which looks at these four fields only.
struct csAIK_CommonParams {
    uint8_t reserved000[0x2C];
    uint32_t xOffset; /* all in pixels */
    uint32_t yOffset;
    uint32_t width;
    uint32_t height;
};

/// Filled by GetImageAttributes(). Sizes and offsets are what the board is set to now, in pixels.
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
    uint64_t timestamp; /* of the picture, "TimestampFrequency" ticks per second; only if size > 0x2C */
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
