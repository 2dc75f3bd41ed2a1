#ifndef AIK_AIK_HPP
#define AIK_AIK_HPP

/// A C++ view of aik.h: header only, C++17 and later, no dependency but the standard library and the system's
/// loader. It adds lifetimes, exceptions, typed values and memory for pictures. What the adapter does, and in
/// which order, is said in aik.h; docs/cpp.md shows a whole host.
///
///   aik::Adapter adapter("C:/vision/bin/OrvoCognexAdapter.dll");
///   aik::Channel channel = adapter.open(0);
///   channel.setup();
///   channel.start();
///   while (const auto picture = channel.grab()) ...
///
/// Errors:  whatever the adapter refuses is thrown as aik::Error with the adapter's text. "No picture yet" is no
///          failure but an empty optional.
/// Threads: the limits of aik.h, "Threads", hold for the functions here, which take no lock of their own. In
///          short: one thread opens, sets up, starts, writes and releases; a thread per channel may grab().
/// Texts:   bytes, as the adapter takes and gives them. Numbers have their classic form, with a point, whatever
///          the locale of the host; no locale is touched.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include "aik/aik.h"

namespace aik {

/* Errors ---------------------------------------------------------------------------------------------- */

/// A call that the adapter refused; what() is the adapter's own text, word for word.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// Whether the reason is that the feature is not available at the moment. A camera feature, for one, needs
    /// a connected camera.
    bool isFeatureUnavailable() const noexcept { return says("Feature is not available."); }
    /// Whether the reason is that there is no channel at this position.
    bool isEndOfChannels() const noexcept { return std::string_view(what()) == "index is not valid"; }

    bool says(std::string_view text) const noexcept
    {
        return std::string_view(what()).find(text) != std::string_view::npos;
    }
};

/// The file is no adapter, or can't be loaded; what() names it and says why.
class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A feature's text is not of the type that was asked for.
class ValueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/* Exports --------------------------------------------------------------------------------------------- */

/// The exports of an adapter: a pointer for each, under its name.
struct Exports {
#define AIK_MEMBER(name, ordinal) AIK_##name name = nullptr;
    AIK_EXPORTS(AIK_MEMBER)
#undef AIK_MEMBER
};

#ifdef AIK_LINKED
/// For a host that links with the import library.
inline Exports linkedExports()
{
    Exports exports;
#define AIK_TAKE(name, ordinal) exports.name = ::name;
    AIK_EXPORTS(AIK_TAKE)
#undef AIK_TAKE
    return exports;
}
#endif

/// Calls an export with a buffer for the reason as its first argument. Throws Error.
template <typename Function, typename... Arguments>
void call(Function function, Arguments... arguments)
{
    std::array<char, AIK_ERRSTR_SIZE> reason{};
    if (function(reason.data(), arguments...) != AIK_OK)
        throw Error(reason.data());
}

/// Loads the adapter at `path`, which then stays loaded until the process ends: threads of the libraries below
/// it may outlive every channel. Throws LoadError.
inline Exports loadExports(const std::filesystem::path& path)
{
    const std::filesystem::path whole = std::filesystem::absolute(path);
#ifdef _WIN32
    // The adapter's folder is searched for the libraries that it needs, before the host's.
    const HMODULE library = LoadLibraryExW(whole.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const auto number = library ? 0 : static_cast<int>(GetLastError());
    const std::string reason = std::system_category().message(number) + " (" + std::to_string(number) + ")";
    const auto find = [&](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(library, name));
    };
#else
    void* const library = dlopen(whole.c_str(), RTLD_NOW | RTLD_LOCAL);
    const char* const said = library ? nullptr : dlerror();
    const std::string reason = said ? said : "";
    const auto find = [&](const char* name) { return dlsym(library, name); };
#endif
    if (!library)
        throw LoadError("The adapter can't be loaded: " + whole.string() + ": " + reason);
    Exports exports;
    const auto require = [&](const char* name) {
        void* const function = find(name);
        if (!function)
            throw LoadError(whole.string() + " is no adapter: it doesn't export " + name);
        return function;
    };
#define AIK_LOOK_UP(name, ordinal) exports.name = reinterpret_cast<AIK_##name>(require(#name));
    AIK_EXPORTS(AIK_LOOK_UP)
#undef AIK_LOOK_UP
    return exports;
}

/* Values as text -------------------------------------------------------------------------------------- */

// What the adapter writes for a boolean.
inline constexpr const char* kTrue = "True";
inline constexpr const char* kFalse = "False";

/// The value that a feature's text stands for: a string, a boolean, or a number that takes the whole text and
/// fits T. Throws ValueError.
template <typename T>
T fromText(const std::string& text)
{
    if constexpr (std::is_same_v<T, std::string>) {
        return text;
    } else if constexpr (std::is_same_v<T, bool>) {
        if (text != kTrue && text != kFalse)
            throw ValueError("\"" + text + "\" is neither " + kTrue + " nor " + kFalse);
        return text == kTrue;
    } else {
        static_assert(std::is_arithmetic_v<T>, "a string, a boolean or a number");
        T number{};
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc::result_out_of_range)
            throw ValueError("\"" + text + "\" is out of range");
        if (error != std::errc() || end != text.data() + text.size())
            throw ValueError("\"" + text + "\" is not such a number");
        return number;
    }
}

/// The text that the adapter takes for a value. A float has as many digits as tell it from every other one;
/// the adapter itself writes six.
template <typename T>
std::string toText(const T& value)
{
    if constexpr (std::is_convertible_v<T, std::string>) {
        return value;
    } else if constexpr (std::is_same_v<T, bool>) {
        return value ? kTrue : kFalse;
    } else {
        static_assert(std::is_arithmetic_v<T>, "a string, a boolean or a number");
        std::array<char, 64> text{};   // enough for any number
        return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
    }
}

/* Features and pictures ------------------------------------------------------------------------------- */

enum class FeatureType : uint32_t {
    Enumeration = AIK_TYPE_ENUMERATION,
    Integer = AIK_TYPE_INTEGER,
    Float = AIK_TYPE_FLOAT,
    Command = AIK_TYPE_COMMAND,
    Boolean = AIK_TYPE_BOOLEAN,
    String = AIK_TYPE_STRING,
    None = AIK_TYPE_NONE,
};

/// A feature as the channel describes it. Whether it is available at the moment only its use tells.
struct Feature {
    std::string name;
    FeatureType type = FeatureType::None;
    std::string description;
    bool isReadable = false;
    bool isWriteable = false;
    std::vector<std::string> entries;   // of an enumeration, ordered by value
};

/// Bytes that belong to somebody else. From C++20 on it converts to std::span<const uint8_t>.
class Bytes {
public:
    Bytes() = default;
    Bytes(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    const uint8_t* data() const { return m_data; }
    size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    const uint8_t* begin() const { return m_data; }
    const uint8_t* end() const { return m_data + m_size; }
    const uint8_t& operator[](size_t position) const { return m_data[position]; }

private:
    const uint8_t* m_data = nullptr;
    size_t m_size = 0;
};

/// A picture, in memory of the channel or of the caller.
struct Picture {
    Bytes bytes;                         // rows from top to bottom, without padding
    uint32_t width = 0;                  // in pixels
    uint32_t height = 0;                 // in pixels
    uint32_t bytesPerPixel = 0;          // 0 for a picture without pixels
    bool isPlanar = false;               // split by threes: "Transformation" is "RGB8PackedToPlanar"
    std::optional<int32_t> format;       // one of AIK_PIXEL_...; see grab()
    std::optional<uint64_t> timestamp;   // in ticks, "TimestampFrequency" of them a second; see grab()
};

/// Width, height and offsets of a channel, in pixels.
struct Geometry {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t xOffset = 0;
    uint32_t yOffset = 0;
};

/// Whether a picture's time stamp is wanted, which costs one more call of the adapter for each.
enum class Timestamp { Wanted, NotWanted };

/* Channel --------------------------------------------------------------------------------------------- */

/// An open channel. The destructor releases it, unless release() has done so. The Adapter outlives it. Stop a
/// channel, and close the cameras of its board, before you release it: the release of the last open channel
/// shuts everything down.
class Channel {
public:
    /// `record`: as GetVideoChannel() filled it. `failure`: why that call failed half-way; empty if it didn't.
    /// Adapter makes channels; this is for tests with exports of their own, which must outlive the channel.
    Channel(const Exports& exports, int32_t index, const csAIK_ChannelRecord& record,
            std::string failure = "")
        : m_exports(&exports),
          m_id(record.channelID),
          m_index(index),
          m_name(record.name),
          m_boardText(record.boardText),
          m_geometry{static_cast<uint32_t>(std::max(record.width, 0)),
                     static_cast<uint32_t>(std::max(record.height, 0))},
          m_failure(std::move(failure))
    {
        if (m_failure.empty() && record.failed != 0)
            m_failure = reason();
    }
    Channel(Channel&& other) noexcept
        : m_exports(other.m_exports),
          m_id(std::exchange(other.m_id, 0)),
          m_index(other.m_index),
          m_name(std::move(other.m_name)),
          m_boardText(std::move(other.m_boardText)),
          m_geometry(other.m_geometry),
          m_failure(std::move(other.m_failure)),
          m_memory(std::move(other.m_memory)),
          m_form(other.m_form)
    {}
    Channel& operator=(Channel&& other) noexcept
    {
        if (this != &other) {
            close();
            m_exports = other.m_exports;
            m_id = std::exchange(other.m_id, 0);
            m_index = other.m_index;
            m_name = std::move(other.m_name);
            m_boardText = std::move(other.m_boardText);
            m_geometry = other.m_geometry;
            m_failure = std::move(other.m_failure);
            m_memory = std::move(other.m_memory);
            m_form = other.m_form;
        }
        return *this;
    }
    ~Channel() { close(); }

    int32_t index() const { return m_index; }            // its position in the adapter's list, from 0
    const std::string& name() const { return m_name; }   // "<board> process: <number> dma: <number>"
    const std::string& boardText() const { return m_boardText; }   // the board's description of itself
    uint32_t width() const { return m_geometry.width; }     // in pixels: of the last setup(), or, before
    uint32_t height() const { return m_geometry.height; }   // the first, when the channel was opened
    /// Why the channel can't be used; empty if it can. Every call on a failed channel but release() throws.
    const std::string& failure() const { return m_failure; }

    // Features

    /// Reads the feature. T is std::string, bool or a type of numbers. Throws Error, and ValueError if the
    /// feature's text is not of this type.
    template <typename T = std::string>
    T read(const std::string& feature) const
    {
        std::array<char, AIK_VALUE_SIZE> value{};
        call(m_exports->ReadValue, m_id, feature.c_str(), value.data());
        return fromText<T>(value.data());
    }

    /// Writes a text, a boolean or a number. A boolean means what it says for every feature: for
    /// "CameraBooleanValue", whose texts are inverted, the other text is written. A text is passed on as it is.
    template <typename T>
    void write(const std::string& feature, const T& value)
    {
        bool isInverted = false;
        if constexpr (std::is_same_v<T, bool>)
            isInverted = feature == "CameraBooleanValue";
        std::string text = toText(value);
        if (isInverted)
            text = text == kTrue ? kFalse : kTrue;
        if (feature == "Transformation" || feature == "BufferCount")
            m_form = {};   // the next picture may be of another form
        call(m_exports->WriteValue, m_id, feature.c_str(), text.c_str());
    }

    /// Executes a command feature.
    void execute(const std::string& feature) { call(m_exports->ExecuteCommand, m_id, feature.c_str()); }

    /// All features, in the adapter's order. Changes and executes nothing.
    std::vector<Feature> features() const
    {
        std::vector<Feature> all;
        while (const auto name = nextName(static_cast<uint32_t>(all.size())))
            all.push_back(feature(*name));
        return all;
    }
    /// Throws Error if the channel has no feature of this name.
    Feature feature(const std::string& name) const
    {
        uint32_t type = AIK_TYPE_NONE;
        call(m_exports->GetFeatureType, m_id, name.c_str(), &type);
        Feature found;
        found.name = name;
        found.type = static_cast<FeatureType>(type);
        found.description = attribute(name, AIK_ATTR_DESCRIPTION);
        found.isReadable = attribute(name, AIK_ATTR_READABLE) == kTrue;
        found.isWriteable = attribute(name, AIK_ATTR_WRITEABLE) == kTrue;
        if (found.type == FeatureType::Enumeration)
            found.entries = entriesOf(name);
        return found;
    }

    // Acquisition

    /// Sets the geometry, builds the ring of buffers, and makes room for a picture. Comes before the first
    /// start(). Throws Error and std::bad_alloc.
    void setup(const Geometry& geometry)
    {
        csAIK_CommonParams params{};
        params.width = geometry.width;
        params.height = geometry.height;
        params.xOffset = geometry.xOffset;
        params.yOffset = geometry.yOffset;
        m_form = {};
        call(m_exports->SetupCommonParams, m_id, &params);
        m_geometry = geometry;
        m_memory.resize(capacity());
    }
    /// Sets up the size of the last setup() or, before it, that of the opening, without offsets.
    void setup() { setup({width(), height(), 0, 0}); }

    /// Starts, or stops, all channels of the applet process. Cameras are started by a feature.
    void start() { call(m_exports->StartAcquisition, m_id); }
    void stop() { call(m_exports->StopAcquisition, m_id); }

    /// Waits up to 7 ms for a picture, which the next grab() then fetches. False if none came.
    bool wait()
    {
        uint32_t result = AIK_ACQ_FAILED;
        call(m_exports->WaitForIntegration, m_id, &result);
        return result != AIK_ACQ_PENDING;
    }

    /// The next picture, in memory of the channel, which the next grab() and setup() use again. None if no
    /// picture came within 7 ms. After setup() only: that makes the memory.
    /// While the board has filled the whole ring, the adapter tells neither format nor time stamp of a picture;
    /// the format is then that of an earlier one, if there was one. If the board's size or format was changed
    /// by key, call setup() before the next grab().
    std::optional<Picture> grab(Timestamp timestamp = Timestamp::Wanted)
    {
        requireSetup();
        return fetch(m_memory.data(), timestamp);
    }
    /// The same, into memory of the caller: capacity() bytes or more. Throws std::length_error for less.
    std::optional<Picture> grabInto(void* memory, size_t size, Timestamp timestamp = Timestamp::Wanted)
    {
        requireSetup();
        if (size < capacity())
            throw std::length_error("A picture needs memory of " + std::to_string(capacity()) + " bytes");
        if (m_form.isMeasured)
            return fetch(static_cast<uint8_t*>(memory), timestamp);
        auto picture = fetch(m_memory.data(), timestamp);
        if (picture) {
            std::copy(picture->bytes.begin(), picture->bytes.end(), static_cast<uint8_t*>(memory));
            picture->bytes = {static_cast<uint8_t*>(memory), picture->bytes.size()};
        }
        return picture;
    }
    /// The bytes that the largest picture of this geometry needs; never 0, for the adapter refuses a null
    /// pointer.
    size_t capacity() const { return static_cast<size_t>(pixels() * AIK_MAX_BYTES_PER_PIXEL + 1); }

    /// Closes the channel, even if the adapter refuses; nothing else may be called afterwards. Throws Error,
    /// which the destructor would swallow.
    void release() { call(m_exports->ReleaseVideoChannel, std::exchange(m_id, 0)); }

private:
    /// What the bytes of the pictures are, as far as it is known since the ring was built.
    struct Form {
        bool isMarked = false;     // the channel's memory holds marks alone
        bool isMeasured = false;   // bytesPerPixel, isPlanar and size are known
        uint32_t bytesPerPixel = 0;
        bool isPlanar = false;
        size_t size = 0;   // of a picture, in bytes
        std::optional<int32_t> format;
    };

    static constexpr uint32_t kHighestEntry = 255;   // the highest value that an entry is looked for at

    uint64_t pixels() const { return uint64_t{width()} * height(); }

    void close() noexcept
    {
        std::array<char, AIK_ERRSTR_SIZE> ignored{};
        if (m_id != 0)
            m_exports->ReleaseVideoChannel(ignored.data(), std::exchange(m_id, 0));
    }

    // Every call on a failed channel tells why it failed. This one has no side effects.
    std::string reason() const
    {
        try {
            nextName(0);
        } catch (const Error& error) {
            return error.what();
        }
        return "The adapter calls the channel failed and gives no reason.";
    }

    std::optional<std::string> nextName(uint32_t position) const
    {
        std::array<char, AIK_NAME_SIZE> name{};
        try {
            call(m_exports->GetFeatureName, m_id, position, name.data());
            return name.data();
        } catch (const Error& error) {
            if (error.says("Cannot find feature with the given index"))
                return std::nullopt;
            throw;
        }
    }

    std::string attribute(const std::string& feature, uint32_t which) const
    {
        std::array<char, AIK_NAME_SIZE> text{};
        call(m_exports->GetFeatureAttr, m_id, feature.c_str(), which, text.data());
        return text.data();
    }

    std::vector<std::string> entriesOf(const std::string& feature) const
    {
        std::vector<std::string> entries;
        for (uint32_t value = 0; value <= kHighestEntry; ++value) {
            std::array<char, AIK_ENUM_SIZE> entry{};
            try {
                call(m_exports->GetValidEnum, m_id, feature.c_str(), value, entry.data());
                entries.emplace_back(entry.data());
            } catch (const Error& error) {
                if (!error.says("Invalid enum index!"))   // a gap
                    throw;
            }
        }
        return entries;
    }

    void requireSetup() const
    {
        if (m_memory.size() < capacity())
            throw std::logic_error("Call setup() before grab()");
    }

    std::optional<Picture> fetch(uint8_t* memory, Timestamp timestamp)
    {
        Picture picture;
        // Without them no picture is fetched: it could be one that came only now.
        if ((timestamp == Timestamp::Wanted || !m_form.format) && !askForAttributes(picture.timestamp))
            return std::nullopt;
        if (timestamp == Timestamp::NotWanted)
            picture.timestamp.reset();
        if (!m_form.isMeasured && !std::exchange(m_form.isMarked, true))
            for (size_t position = 0; position < m_memory.size(); ++position)
                m_memory[position] = markAt(position);
        uint32_t result = AIK_ACQ_FAILED;
        call(m_exports->GetImage, m_id, memory, &result);
        if (result == AIK_ACQ_PENDING)
            return std::nullopt;
        if (!m_form.isMeasured)
            measure();
        picture.bytes = {memory, m_form.size};
        picture.width = width();
        picture.height = height();
        picture.bytesPerPixel = m_form.bytesPerPixel;
        picture.isPlanar = m_form.isPlanar;
        picture.format = m_form.format;
        return picture;
    }

    /// False if no picture came.
    bool askForAttributes(std::optional<uint64_t>& timestamp)
    {
        csAIK_ImageAttributes attributes{};
        attributes.size = sizeof(attributes);
        uint32_t result = AIK_ACQ_FAILED;
        try {
            call(m_exports->GetImageAttributes, m_id, &attributes, &result);
        } catch (const Error& error) {
            if (!error.says("Acquisistion is not setup"))   // as it is spelled
                throw;
            return true;   // the ring is full: a fetch makes room
        }
        if (result == AIK_ACQ_PENDING)
            return false;
        m_form.format = attributes.pixelFormat;
        timestamp = attributes.timestamp;
        return true;
    }

    // The format doesn't tell the bytes of a pixel. So memory is marked before the first picture of a ring, and
    // what was overwritten tells. A mark is hashed from its position, so that no picture has them by chance.
    static uint8_t markAt(size_t position)
    {
        uint64_t mixed = (position + 1) * 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        return static_cast<uint8_t>(mixed >> 56);
    }

    void measure()
    {
        m_form.isPlanar = read("Transformation") == "RGB8PackedToPlanar";
        size_t extent = m_memory.size();
        while (extent > 0 && m_memory[extent - 1] == markAt(extent - 1))
            --extent;
        // Rounded up: the last bytes may equal their marks, and a split into planes omits up to two bytes.
        if (pixels() > 0)
            m_form.bytesPerPixel = static_cast<uint32_t>((extent + pixels() - 1) / pixels());
        m_form.size = static_cast<size_t>(pixels() * m_form.bytesPerPixel);
        if (m_form.isPlanar)
            m_form.size -= m_form.size % 3;
        m_form.isMeasured = true;
        m_form.isMarked = false;
    }

    const Exports* m_exports;
    int64_t m_id;   // 0 once the channel is closed
    int32_t m_index;
    std::string m_name;
    std::string m_boardText;
    Geometry m_geometry;
    std::string m_failure;
    std::vector<uint8_t> m_memory;
    Form m_form;
};

/* Adapter --------------------------------------------------------------------------------------------- */

/// A loaded adapter. Outlives the channels that it opens. One for a process is enough: all see the same boards.
class Adapter {
public:
    /// Throws LoadError.
    explicit Adapter(const std::filesystem::path& path)
        : m_path(std::filesystem::absolute(path)), m_exports(loadExports(m_path))
    {}
    /// For a host that links: `aik::Adapter adapter(aik::linkedExports())`.
    explicit Adapter(const Exports& exports) : m_exports(exports) {}
    Adapter(const Adapter&) = delete;
    Adapter& operator=(const Adapter&) = delete;

    /// Absolute; empty if the adapter was not loaded here.
    const std::filesystem::path& path() const { return m_path; }

    /// Opens the channels, failed ones too, in the adapter's order; empty if there is no board. Throws Error;
    /// what this call opened is then closed again.
    std::vector<Channel> openAll() const
    {
        std::vector<Channel> channels;
        try {
            for (;;)
                channels.push_back(openHalfWay(static_cast<int32_t>(channels.size())));
        } catch (const Error& error) {
            if (channels.empty())
                shutDown();
            if (!error.isEndOfChannels())
                throw;
        }
        return channels;
    }

    /// Opens one channel. Throws Error, also for a failed channel and for an index that is out of range; a
    /// first open that fails leaves nothing behind.
    Channel open(int32_t index) const
    {
        try {
            Channel channel = openHalfWay(index);
            if (!channel.failure().empty())
                throw Error(channel.failure());
            return channel;
        } catch (const Error&) {
            shutDown();
            throw;
        }
    }

private:
    /// A failed call may have opened the channel all the same: it then has an id and must be released.
    Channel openHalfWay(int32_t index) const
    {
        csAIK_ChannelRecord record{};
        record.size = sizeof(record);
        try {
            call(m_exports.GetVideoChannel, index, &record);
        } catch (const Error& error) {
            if (record.channelID == 0)
                throw;
            return {m_exports, index, record, error.what()};
        }
        return {m_exports, index, record};
    }

    // Without it, the next open would not search for boards again. With no channel open it fails, and closes the
    // boards all the same; with one it fails and changes nothing.
    void shutDown() const
    {
        std::array<char, AIK_ERRSTR_SIZE> expected{};
        m_exports.ReleaseVideoChannel(expected.data(), 0);
    }

    std::filesystem::path m_path;
    Exports m_exports;
};

}   // namespace aik

#endif
