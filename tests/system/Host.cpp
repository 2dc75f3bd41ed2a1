#include "tests/system/Host.h"

#include <chrono>
#include <cstring>

namespace orvo::test {

namespace {

constexpr auto kGenerous = std::chrono::seconds(20);

}   // namespace

template <typename Function>
Answer Host::call(Function&& function)
{
    Canaries errstr(AIK_ERRSTR_SIZE);
    Answer answer;
    answer.code = function(errstr.text());
    if (answer.code == AIK_OK) {
        EXPECT_TRUE(errstr.isUntouchedFrom(0)) << "A success wrote to errstr.";
    } else {
        answer.text = errstr.text();
        EXPECT_TRUE(errstr.isUntouchedFrom(answer.text.size() + 1)) << "More than the text was written.";
    }
    return answer;
}

Host::~Host()
{
    while (!m_open.empty())
        release(*m_open.begin());
}

Answer Host::open(int32_t index)
{
    m_record = {};
    m_record.size = sizeof m_record;
    Answer answer = call([&](char* errstr) { return m_adapter.getVideoChannel(errstr, index, &m_record); });
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
    return call([&](char* errstr) { return m_adapter.releaseVideoChannel(errstr, id); });
}

Answer Host::setup(int64_t id, uint32_t width, uint32_t height, uint32_t xOffset, uint32_t yOffset)
{
    csAIK_CommonParams params{};
    params.xOffset = xOffset;
    params.yOffset = yOffset;
    params.width = width;
    params.height = height;
    return call([&](char* errstr) { return m_adapter.setupCommonParams(errstr, id, &params); });
}

Answer Host::start(int64_t id)
{
    return call([&](char* errstr) { return m_adapter.startAcquisition(errstr, id); });
}

Answer Host::stop(int64_t id)
{
    return call([&](char* errstr) { return m_adapter.stopAcquisition(errstr, id); });
}

Answer Host::waitForIntegration(int64_t id)
{
    uint32_t acqResult = 0;
    Answer answer = call([&](char* errstr) { return m_adapter.waitForIntegration(errstr, id, &acqResult); });
    answer.acqResult = acqResult;
    return answer;
}

Answer Host::attributes(int64_t id)
{
    m_attributes = {};
    m_attributes.size = sizeof m_attributes;
    uint32_t acqResult = 0;
    Answer answer = call(
        [&](char* errstr) { return m_adapter.getImageAttributes(errstr, id, &m_attributes, &acqResult); });
    answer.acqResult = acqResult;
    return answer;
}

Answer Host::getImage(int64_t id, void* image)
{
    uint32_t acqResult = 0;
    Answer answer = call([&](char* errstr) { return m_adapter.getImage(errstr, id, image, &acqResult); });
    answer.acqResult = acqResult;
    return answer;
}

std::string Host::fetch(int64_t id, size_t size)
{
    Canaries memory(size);
    const auto end = std::chrono::steady_clock::now() + kGenerous;
    Answer answer = pending();
    while (answer == pending() && std::chrono::steady_clock::now() < end)
        answer = getImage(id, memory.data());
    EXPECT_EQ(answer, test::image());
    return {memory.text(), size};
}

Answer Host::execute(int64_t id, const char* feature)
{
    return call([&](char* errstr) { return m_adapter.executeCommand(errstr, id, feature); });
}

Answer Host::read(int64_t id, const char* feature)
{
    Canaries value(AIK_VALUE_SIZE);
    Answer answer =
        call([&](char* errstr) { return m_adapter.readValue(errstr, id, feature, value.text()); });
    if (answer.code == AIK_OK)
        answer.text = value.text();
    return answer;
}

Answer Host::write(int64_t id, const char* feature, const char* value)
{
    return call([&](char* errstr) { return m_adapter.writeValue(errstr, id, feature, value); });
}

Answer Host::featureName(int64_t id, uint32_t index)
{
    Canaries name(AIK_NAME_SIZE);
    Answer answer =
        call([&](char* errstr) { return m_adapter.getFeatureName(errstr, id, index, name.text()); });
    if (answer.code == AIK_OK)
        answer.text = name.text();
    return answer;
}

Answer Host::featureType(int64_t id, const char* feature)
{
    uint32_t type = 0;
    Answer answer = call([&](char* errstr) { return m_adapter.getFeatureType(errstr, id, feature, &type); });
    if (answer.code == AIK_OK)
        answer.text = std::to_string(static_cast<int32_t>(type));
    return answer;
}

Answer Host::attribute(int64_t id, const char* feature, uint32_t attribute)
{
    Canaries result(AIK_NAME_SIZE);
    Answer answer = call([&](char* errstr) {
        return m_adapter.getFeatureAttr(errstr, id, feature, attribute, result.text());
    });
    if (answer.code == AIK_OK)
        answer.text = result.text();
    return answer;
}

Answer Host::validEnum(int64_t id, const char* feature, uint32_t index)
{
    Canaries value(AIK_ENUM_SIZE);
    std::memset(value.data(), 0, AIK_ENUM_SIZE);
    Answer answer =
        call([&](char* errstr) { return m_adapter.getValidEnum(errstr, id, feature, index, value.text()); });
    if (answer.code == AIK_OK)
        answer.text = value.text();
    return answer;
}

}   // namespace orvo::test
