#include "aikctl/commands/Command.h"

#include <charconv>
#include <string>
#include <system_error>

#include <CLI/CLI.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

std::function<std::string(const std::string&)> wholeNumber(uint64_t lowest, uint64_t highest)
{
    return [lowest, highest](const std::string& text) -> std::string {
        uint64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool isWhole = error == std::errc() && end == text.data() + text.size();
        if (isWhole && number >= lowest && number <= highest)
            return "";
        return text + " is no whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
    };
}

std::function<std::string(const std::string&)> secondsUpTo(uint64_t most)
{
    return [most](const std::string& text) -> std::string {
        constexpr double kLeast = 0.001;
        double seconds = 0;
        // What is no number compares as false, so "nan" is refused, too.
        if (CLI::detail::lexical_cast(text, seconds) && seconds >= kLeast &&
            seconds <= static_cast<double>(most))
            return "";
        return text + " is no number of seconds from 0.001 to " + std::to_string(most);
    };
}

void closeCameras(BoardCameras& cameras, Console& console)
{
    try {
        cameras.close();
    } catch (const aik::Error& failure) {
        console.fail(placeOf(cameras.channel()) + ": closing the cameras: " + failure.what());
    }
}

void releaseAll(std::vector<aik::Channel>& channels, Console& console)
{
    for (aik::Channel& channel : channels) {
        try {
            channel.release();
        } catch (const aik::Error& failure) {
            console.fail(placeOf(channel) + ": " + failure.what());
        }
    }
}

}   // namespace orvo::aikctl
