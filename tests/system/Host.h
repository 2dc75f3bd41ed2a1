#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <type_traits>

#include "aik/aik.hpp"
#include "tests/system/Answer.h"
#include "tests/system/Canaries.h"

namespace orvo::test {

/// A host of the adapter, linked as hosts are, over the C++ view of the interface. What the view hides, such as
/// the status of a failed fetch, has bare calls. Each call, the view's too, hands in memory between canaries,
/// and a success must leave `errstr` alone. Channels are named by their ids. Its end releases what is open.
class Host {
public:
    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    /// One call of an export: all its arguments but `errstr`.
    template <typename... Parameters>
    static Answer call(int32_t (*function)(char*, Parameters...),
                       std::type_identity_t<Parameters>... arguments)
    {
        Canaries errstr(AIK_ERRSTR_SIZE);
        Answer answer;
        answer.code = function(errstr.text(), arguments...);
        if (answer.code != AIK_OK)
            answer.text = errstr.text();
        EXPECT_TRUE(errstr.isUntouchedFrom(answer.code == AIK_OK ? 0 : answer.text.size() + 1))
            << "errstr holds more than the text of a failure.";
        return answer;
    }

    /// Opens a channel and keeps its record.
    Answer open(int32_t index);
    const csAIK_ChannelRecord& record() const { return m_record; }
    /// Opens a channel that must open, and answers its id.
    int64_t opened(int32_t index);
    Answer release(int64_t id);

    Answer setup(int64_t id, uint32_t width, uint32_t height, uint32_t xOffset = 0, uint32_t yOffset = 0);
    Answer start(int64_t id)
    {
        return tried([&] { channel(id).start(); });
    }
    Answer stop(int64_t id)
    {
        return tried([&] { channel(id).stop(); });
    }

    static Answer waitForIntegration(int64_t id) { return imageCall(WaitForIntegration, id); }
    /// Fills a record that holds canaries.
    Answer attributes(int64_t id);
    const csAIK_ImageAttributes& attributes() const { return m_attributes; }
    static Answer getImage(int64_t id, void* image) { return imageCall(GetImage, id, image); }
    /// Fetches until there is an image, and answers its bytes.
    static std::string fetch(int64_t id, size_t size);

    Answer execute(int64_t id, const char* feature)
    {
        return tried([&] { channel(id).execute(feature); });
    }
    Answer read(int64_t id, const char* feature)
    {
        Answer answer;
        const Answer failure = tried([&] { answer.text = channel(id).read(feature); });
        return failure == done() ? answer : failure;
    }
    Answer write(int64_t id, const char* feature, const char* value)
    {
        return tried([&] { channel(id).write(feature, value); });
    }
    static Answer featureName(int64_t id, uint32_t index)
    {
        return textCall(AIK_NAME_SIZE, GetFeatureName, id, index);
    }
    static Answer attribute(int64_t id, const char* feature, uint32_t attribute)
    {
        return textCall(AIK_NAME_SIZE, GetFeatureAttr, id, feature, attribute);
    }
    /// Hands in zeroes, as the export wants it.
    static Answer validEnum(int64_t id, const char* feature, uint32_t index);

private:
    /// The channel of this id, open or not: what the adapter says of an id that it doesn't know is tested too.
    /// Any thread, once the id was used on one.
    aik::Channel& channel(int64_t id);

    template <typename Step>
    static Answer tried(const Step& step)
    {
        try {
            step();
            return done();
        } catch (const aik::Error& failure) {
            return fails(failure.what());
        }
    }

    /// A call whose last argument is the acquisition status.
    template <typename Export, typename... Arguments>
    static Answer imageCall(Export* function, Arguments... arguments)
    {
        uint32_t acqResult = 0;
        Answer answer = call(function, arguments..., &acqResult);
        answer.acqResult = acqResult;
        return answer;
    }
    /// A call whose last argument is memory for a text.
    template <typename Export, typename... Arguments>
    static Answer textCall(size_t size, Export* function, Arguments... arguments)
    {
        Canaries text(size);
        Answer answer = call(function, arguments..., text.text());
        if (answer.code == AIK_OK)
            answer.text = text.text();
        return answer;
    }

    std::map<int64_t, aik::Channel> m_channels;
    csAIK_ChannelRecord m_record{};
    csAIK_ImageAttributes m_attributes{};
};

}   // namespace orvo::test
