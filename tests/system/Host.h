#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "aik/aik.h"
#include "tests/system/Adapter.h"
#include "tests/system/Answer.h"
#include "tests/system/Canaries.h"

namespace orvo::test {

/// A host of the adapter: each call hands in memory between canaries, and a success must leave `errstr`
/// alone. Channels are named by their ids. Its end releases what is open.
class Host {
public:
    explicit Host(const Adapter& adapter) : m_adapter(adapter) {}
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    /// Opens a channel and keeps its record.
    Answer open(int32_t index);
    const csAIK_ChannelRecord& record() const { return m_record; }
    /// Opens a channel that must open, and answers its id.
    int64_t opened(int32_t index);
    Answer release(int64_t id);

    Answer setup(int64_t id, uint32_t width, uint32_t height, uint32_t xOffset = 0, uint32_t yOffset = 0);
    Answer start(int64_t id);
    Answer stop(int64_t id);

    Answer waitForIntegration(int64_t id);
    Answer attributes(int64_t id);
    const csAIK_ImageAttributes& attributes() const { return m_attributes; }
    Answer getImage(int64_t id, void* image);
    /// Fetches until there is an image, and answers its bytes.
    std::string fetch(int64_t id, size_t size);

    Answer execute(int64_t id, const char* feature);
    Answer read(int64_t id, const char* feature);
    Answer write(int64_t id, const char* feature, const char* value);
    Answer featureName(int64_t id, uint32_t index);
    Answer featureType(int64_t id, const char* feature);
    Answer attribute(int64_t id, const char* feature, uint32_t attribute);
    Answer validEnum(int64_t id, const char* feature, uint32_t index);

private:
    template <typename Function>
    Answer call(Function&& function);

    const Adapter& m_adapter;
    std::set<int64_t> m_open;
    csAIK_ChannelRecord m_record{};
    csAIK_ImageAttributes m_attributes{};
};

}   // namespace orvo::test
