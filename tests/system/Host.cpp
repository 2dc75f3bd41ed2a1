#include "tests/system/Host.h"

#include <chrono>
#include <cstring>

namespace orvo::test {

Host::~Host()
{
    while (!m_open.empty())
        release(*m_open.begin());
}

Answer Host::open(int32_t index)
{
    m_record = {};
    m_record.size = sizeof m_record;
    Answer answer = call(GetVideoChannel, index, &m_record);
    if (answer == done())
        m_open.insert(m_record.channelID);
    return answer;
}

int64_t Host::opened(int32_t index)
{
    EXPECT_EQ(open(index), done());
    return m_record.channelID;
}

Answer Host::release(int64_t id)
{
    m_open.erase(id);
    return call(ReleaseVideoChannel, id);
}

Answer Host::setup(int64_t id, uint32_t width, uint32_t height, uint32_t xOffset, uint32_t yOffset)
{
    csAIK_CommonParams params{};
    params.xOffset = xOffset;
    params.yOffset = yOffset;
    params.width = width;
    params.height = height;
    return call(SetupCommonParams, id, &params);
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
