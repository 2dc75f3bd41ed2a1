#include "aikctl/adapter/Channel.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace orvo::aikctl {

namespace {

// Every call on a failed channel tells why it failed. This one has no side effects.
std::string reasonOf(const Exports& exports, int64_t id)
{
    try {
        std::array<char, AIK_NAME_SIZE> name{};
        call(exports.GetFeatureName, id, 0U, name.data());
    } catch (const AdapterFailure& failure) {
        return failure.what();
    }
    return "The adapter calls the channel failed and gives no reason.";
}

constexpr std::string_view kNoMoreFeatures = "Cannot find feature with the given index";
constexpr std::string_view kNoSuchEntry = "Invalid enum index!";

/// Makes the call; false if it fails with the expected text, which is no failure here.
template <typename Call>
bool unless(std::string_view expected, Call&& call)
{
    try {
        call();
        return true;
    } catch (const AdapterFailure& failure) {
        if (std::string_view(failure.what()).find(expected) == std::string_view::npos)
            throw;
        return false;
    }
}

}   // namespace

Channel::Channel(const Exports& exports, int32_t index, const csAIK_ChannelRecord& record,
                 std::string failure)
    : m_exports(&exports),
      m_id(record.channelID),
      m_index(index),
      m_name(record.name),
      m_boardText(record.boardText),
      m_width(static_cast<uint32_t>(std::max(record.width, 0))),
      m_height(static_cast<uint32_t>(std::max(record.height, 0))),
      m_failure(std::move(failure))
{
    if (m_failure.empty() && record.failed != 0)
        m_failure = reasonOf(exports, m_id);
}

Channel::Channel(Channel&& other) noexcept
    : m_exports(other.m_exports),
      m_id(std::exchange(other.m_id, 0)),
      m_index(other.m_index),
      m_name(std::move(other.m_name)),
      m_boardText(std::move(other.m_boardText)),
      m_width(other.m_width),
      m_height(other.m_height),
      m_failure(std::move(other.m_failure))
{}

Channel::~Channel()
{
    if (m_id == 0)
        return;
    std::array<char, AIK_ERRSTR_SIZE> ignored{};
    m_exports->ReleaseVideoChannel(ignored.data(), m_id);
}

std::string Channel::read(const std::string& feature) const
{
    std::array<char, AIK_VALUE_SIZE> value{};
    call(m_exports->ReadValue, m_id, feature.c_str(), value.data());
    return value.data();
}

void Channel::write(const std::string& feature, const std::string& value)
{
    call(m_exports->WriteValue, m_id, feature.c_str(), value.c_str());
}

void Channel::execute(const std::string& feature)
{
    call(m_exports->ExecuteCommand, m_id, feature.c_str());
}

std::optional<std::string> Channel::featureName(uint32_t position) const
{
    std::array<char, AIK_NAME_SIZE> name{};
    return unless(kNoMoreFeatures, [&] { call(m_exports->GetFeatureName, m_id, position, name.data()); })
               ? std::optional<std::string>(name.data())
               : std::nullopt;
}

uint32_t Channel::featureType(const std::string& feature) const
{
    uint32_t type = AIK_TYPE_NONE;
    call(m_exports->GetFeatureType, m_id, feature.c_str(), &type);
    return type;
}

std::string Channel::featureAttribute(const std::string& feature, uint32_t attribute) const
{
    std::array<char, AIK_NAME_SIZE> text{};
    call(m_exports->GetFeatureAttr, m_id, feature.c_str(), attribute, text.data());
    return text.data();
}

std::optional<std::string> Channel::enumEntry(const std::string& feature, uint32_t value) const
{
    std::array<char, AIK_ENUM_SIZE> entry{};
    return unless(kNoSuchEntry,
                  [&] { call(m_exports->GetValidEnum, m_id, feature.c_str(), value, entry.data()); })
               ? std::optional<std::string>(entry.data())
               : std::nullopt;
}

void Channel::setup()
{
    csAIK_CommonParams params{};
    params.width = m_width;
    params.height = m_height;
    call(m_exports->SetupCommonParams, m_id, &params);
}

void Channel::start()
{
    call(m_exports->StartAcquisition, m_id);
}

void Channel::stop()
{
    call(m_exports->StopAcquisition, m_id);
}

void Channel::release()
{
    call(m_exports->ReleaseVideoChannel, std::exchange(m_id, 0));
}

std::optional<csAIK_ImageAttributes> Channel::attributes()
{
    csAIK_ImageAttributes attributes{};
    attributes.size = sizeof(attributes);
    uint32_t result = AIK_ACQ_FAILED;
    call(m_exports->GetImageAttributes, m_id, &attributes, &result);
    return result == AIK_ACQ_PENDING ? std::nullopt : std::optional(attributes);
}

bool Channel::getImage(void* destination)
{
    uint32_t result = AIK_ACQ_FAILED;
    call(m_exports->GetImage, m_id, destination, &result);
    return result != AIK_ACQ_PENDING;
}

}   // namespace orvo::aikctl
