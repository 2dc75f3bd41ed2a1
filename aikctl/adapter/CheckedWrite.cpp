#include "aikctl/adapter/CheckedWrite.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <string_view>

namespace orvo::aikctl {

namespace {

constexpr int kDigitsShown = 6;   // of a float, by the adapter

/// The number that takes the whole text, in the decimal form that is the same for equal values.
template <typename Number>
std::optional<Number> wholeText(std::string_view text)
{
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::optional<std::string> asInteger(const std::string& text)
{
    if (const auto number = wholeText<int64_t>(text))
        return std::to_string(*number);
    if (const auto number = wholeText<uint64_t>(text))
        return std::to_string(*number);
    return std::nullopt;
}

std::optional<std::string> asFloat(const std::string& text)
{
    const auto number = wholeText<double>(text);
    if (!number || text.find_first_not_of("+-.0123456789eE") != std::string::npos)   // "inf" and "nan"
        return std::nullopt;
    std::array<char, 32> shown{};
    const auto written = std::to_chars(shown.data(), shown.data() + shown.size(), *number,
                                       std::chars_format::general, kDigitsShown);
    return std::string(shown.data(), written.ptr);
}

/// The text in the form that is the same for equal values; none if it is no value of this type.
std::optional<std::string> normalized(aik::FeatureType type, const std::string& text)
{
    switch (type) {
    case aik::FeatureType::Integer:
        return asInteger(text);
    case aik::FeatureType::Float:
        return asFloat(text);
    default:
        return text;
    }
}

/// The adapter itself takes what begins with a number.
void requireNumber(aik::FeatureType type, const std::string& text)
{
    if (!normalized(type, text))
        throw std::runtime_error("\"" + text + "\" is no " +
                                 (type == aik::FeatureType::Float ? "decimal number" : "whole number"));
}

Written readBack(const aik::Channel& channel, const aik::Feature& feature, const std::string& expected)
{
    if (!feature.isReadable)
        return {};
    const auto value = channel.read(feature.name);
    if (!isSameValue(feature.type, expected, value))
        throw std::runtime_error("it reads back as " + value);
    const bool isRounded =
        feature.type == aik::FeatureType::Float && wholeText<double>(expected) != wholeText<double>(value);
    return {value, isRounded ? "it reads back as " + value + ", rounded to six digits" : ""};
}

}   // namespace

Written writeChecked(aik::Channel& channel, const std::string& feature, const std::string& text)
{
    const aik::Feature description = channel.feature(feature);
    requireNumber(description.type, text);
    if (description.type != aik::FeatureType::Boolean) {
        channel.write(feature, text);
        return readBack(channel, description, text);
    }
    // The one boolean feature takes its text inverted.
    if (text != aik::kTrue && text != aik::kFalse)
        throw std::runtime_error(feature + " is either " + aik::kTrue + " or " + aik::kFalse);
    Written written = writeSwitch(channel, feature, text == aik::kFalse);
    written.note = "\"" + text + "\" switches " + (text == aik::kTrue ? "off" : "on") +
                   ", because the adapter inverts what is written here; --on and --off say what they mean";
    return written;
}

Written writeSwitch(aik::Channel& channel, const std::string& feature, bool isOn)
{
    const aik::Feature description = channel.feature(feature);
    if (description.type != aik::FeatureType::Boolean)
        throw std::runtime_error(feature + " is no boolean feature that could be switched on or off");
    channel.write(feature, isOn);
    return readBack(channel, description, aik::toText(isOn));
}

Written writeAsIs(aik::Channel& channel, const std::string& feature, const std::string& text)
{
    channel.write(feature, text);
    return channel.feature(feature).isReadable ? Written{channel.read(feature), ""} : Written{};
}

bool isSameValue(aik::FeatureType type, const std::string& left, const std::string& right)
{
    const auto value = normalized(type, left);
    return value ? value == normalized(type, right) : left == right;
}

}   // namespace orvo::aikctl
