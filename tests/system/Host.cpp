#include "tests/system/Host.h"

#include <chrono>
#include <cstring>

namespace orvo::test {

namespace {

/// An export between canaries.
template <auto function>
struct Guarded;
template <typename... Parameters, int32_t (*function)(char*, Parameters...)>
struct Guarded<function> {
    static int32_t call(char* errstr, Parameters... arguments)
    {
        const Answer answer = Host::call(function, arguments...);
        if (answer.code != AIK_OK)
            std::strcpy(errstr, answer.text.c_str());
        return answer.code;
    }
};

int32_t guardedReadValue(char* errstr, int64_t id, const char* feature, char* value)
{
    Canaries text(AIK_VALUE_SIZE);
    const int32_t code = Guarded<ReadValue>::call(errstr, id, feature, text.text());
    if (code == AIK_OK)
        std::strcpy(value, text.text());
    return code;
}

const aik::Exports& guardedExports()
{
    static const aik::Exports exports = [] {
        aik::Exports guarded;
#define ORVO_GUARD(name, ordinal) guarded.name = Guarded<name>::call;
        AIK_EXPORTS(ORVO_GUARD)
#undef ORVO_GUARD
        guarded.ReadValue = guardedReadValue;
        return guarded;
    }();
    return exports;
}

}   // namespace

Host::~Host()
{
    while (!m_channels.empty())
        m_channels.erase(m_channels.begin());
}

aik::Channel& Host::channel(int64_t id)
{
    const auto known = m_channels.find(id);
    if (known != m_channels.end())
        return known->second;
    csAIK_ChannelRecord record{};   // not that of the open: the view would ask for the reason of a failed one
    record.channelID = id;
    return m_channels.try_emplace(id, guardedExports(), 0, record).first->second;
}

Answer Host::open(int32_t index)
{
    m_record = {};
    m_record.size = sizeof m_record;
    Answer answer = call(GetVideoChannel, index, &m_record);
    if (answer == done())
        channel(m_record.channelID);
    return answer;
}

int64_t Host::opened(int32_t index)
{
    EXPECT_EQ(open(index), done());
    return m_record.channelID;
}

Answer Host::release(int64_t id)
{
    Answer answer = tried([&] { channel(id).release(); });
    m_channels.erase(id);
    return answer;
}

Answer Host::setup(int64_t id, uint32_t width, uint32_t height, uint32_t xOffset, uint32_t yOffset)
{
    return tried([&] { channel(id).setup({width, height, xOffset, yOffset}); });
}

Answer Host::attributes(int64_t id)
{
    std::memset(&m_attributes, Canaries::kCanary, sizeof m_attributes);
    m_attributes.size = sizeof m_attributes;
    return imageCall(GetImageAttributes, id, &m_attributes);
}

std::string Host::fetch(int64_t id, size_t size)
{
    Canaries memory(size);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    Answer answer = pending();
    while (answer == pending() && std::chrono::steady_clock::now() < end)
        answer = getImage(id, memory.data());
    EXPECT_EQ(answer, image());
    return {memory.text(), size};
}

Answer Host::validEnum(int64_t id, const char* feature, uint32_t index)
{
    Canaries value(AIK_ENUM_SIZE);
    std::memset(value.data(), 0, AIK_ENUM_SIZE);
    Answer answer = call(GetValidEnum, id, feature, index, value.text());
    if (answer.code == AIK_OK)
        answer.text = value.text();
    return answer;
}

}   // namespace orvo::test
