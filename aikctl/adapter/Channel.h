#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "aik/aik.h"
#include "aikctl/adapter/Exports.h"

namespace orvo::aikctl {

// What the adapter writes for a boolean.
inline constexpr const char* kTrue = "True";
inline constexpr const char* kFalse = "False";

/// An open channel. The destructor closes it, unless release() has done so.
/// Threads: attributes(), getImage() and read() on one thread at a time, which may differ from the thread of
///          the rest; the rest on one thread for all channels.
/// Throws:  AdapterFailure, from every call that the adapter refuses.
class Channel {
public:
    /// `record`: as the adapter filled it. `failure`: why the opening failed half-way; empty if it didn't.
    Channel(const Exports& exports, int32_t index, const csAIK_ChannelRecord& record, std::string failure);
    Channel(Channel&& other) noexcept;
    Channel& operator=(Channel&&) = delete;
    ~Channel();

    int32_t index() const { return m_index; }
    const std::string& name() const { return m_name; }
    const std::string& boardText() const { return m_boardText; }
    uint32_t width() const { return m_width; }   // in pixels, when the channel was opened
    uint32_t height() const { return m_height; }
    /// Why the channel can't be used; empty if it can.
    const std::string& failure() const { return m_failure; }

    std::string read(const std::string& feature) const;
    void write(const std::string& feature, const std::string& value);
    void execute(const std::string& feature);

    /// The name of the feature at `position`, from 0; none after the last one.
    std::optional<std::string> featureName(uint32_t position) const;
    uint32_t featureType(const std::string& feature) const;   // one of AIK_TYPE_...
    /// `attribute`: one of AIK_ATTR_...
    std::string featureAttribute(const std::string& feature, uint32_t attribute) const;
    /// The enumeration entry with that value; none if there isn't one.
    std::optional<std::string> enumEntry(const std::string& feature, uint32_t value) const;

    /// Builds the ring for width() x height().
    void setup();
    void start();
    void stop();
    /// Closes the channel, even if the adapter refuses.
    void release();

    /// Describes the next picture; none if no picture came within 7 ms.
    std::optional<csAIK_ImageAttributes> attributes();
    /// Copies the next picture, at most width() x height() x AIK_MAX_BYTES_PER_PIXEL bytes. False if none
    /// came within 7 ms.
    bool getImage(void* destination);

private:
    const Exports* m_exports;
    int64_t m_id;   // 0 once the channel is closed
    int32_t m_index;
    std::string m_name;
    std::string m_boardText;
    uint32_t m_width;
    uint32_t m_height;
    std::string m_failure;
};

}   // namespace orvo::aikctl
