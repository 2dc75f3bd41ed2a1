#include "aikctl/commands/CameraOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

constexpr uint64_t kHighestPort = 255;

constexpr const char* kSettingForm = "NAME=VALUE";
constexpr const char* kRegionForm = "WxH+X+Y";

// A grab sets up the channel with them, and would overwrite what was set by key.
constexpr std::array<std::string_view, 4> kGeometryKeys = {"BRD_WIDTH", "BRD_HEIGHT", "BRD_XOFFSET",
                                                           "BRD_YOFFSET"};

std::string checkSetting(const std::string& text)
{
    const size_t sign = text.find('=');
    return sign == 0 || sign == std::string::npos ? text + " is no " + kSettingForm : "";
}

std::string checkBoardSetting(const std::string& text)
{
    for (const std::string_view key : kGeometryKeys)
        if (text.starts_with(std::string(key) + "="))
            return "--roi sets " + std::string(key);
    return checkSetting(text);
}

/// Takes a whole number, which the text begins with, off its front.
bool takeNumber(std::string_view& text, uint32_t& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return error == std::errc();
}

bool takeSign(std::string_view& text, char sign)
{
    const bool isThere = text.starts_with(sign);
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// WxH, or WxH+X+Y.
std::optional<aik::Geometry> parseRegion(std::string_view text)
{
    aik::Geometry region;
    bool isGood = takeNumber(text, region.width) && takeSign(text, 'x') && takeNumber(text, region.height);
    if (isGood && !text.empty())
        isGood = takeSign(text, '+') && takeNumber(text, region.xOffset) && takeSign(text, '+') &&
                 takeNumber(text, region.yOffset);
    return isGood && text.empty() && region.width > 0 && region.height > 0 ? std::optional(region)
                                                                           : std::nullopt;
}

/// Tells the console if there is no camera, or if the search failed after the first.
void connectCameras(BoardCameras& cameras, Console& console)
{
    const std::string place = placeOf(cameras.channel()) + ": ";
    try {
        if (!cameras.connect())
            throw std::runtime_error("another channel has connected the cameras");
        if (cameras.ports().empty())
            console.note(place + "no camera was found");
    } catch (const std::exception& failure) {
        const std::string text = place + "search for cameras: " + failure.what();
        if (cameras.ports().empty())
            throw std::runtime_error(text);
        console.fail(text);
    }
}

}   // namespace

CLI::Option* declarePort(CLI::App& command, std::optional<int32_t>& port, const std::string& help)
{
    return command.add_option("--port", port, help)->check(wholeNumber(0, kHighestPort));
}

void declareCameraChoice(CLI::App& command, CameraChoice& choice)
{
    command.add_flag("--camera", choice.isConnected,
                     "Connect the cameras of the board first and close them at the end");
    CLI::Option* const port = declarePort(
        command, choice.port, "With --camera: the camera at this port; needed if there are several");
    port->needs("--camera");
    command
        .add_flag("--probe", choice.isProbed,
                  "With --camera: find out which camera feeds the channel, by starting one at a time")
        ->needs("--camera")
        ->excludes(port);
}

bool connectCamera(BoardCameras& cameras, const CameraChoice& choice, Console& console)
{
    connectCameras(cameras, console);
    const std::string place = placeOf(cameras.channel()) + ": ";
    const auto& ports = cameras.ports();
    if (ports.empty() && (choice.port || choice.isProbed))
        throw std::runtime_error(place + "there is no camera to choose");
    if (choice.isProbed) {
        const auto port = cameras.probe(choice.patience);
        if (!port)
            throw std::runtime_error(place + "none of the cameras at " + cameras.describePorts() +
                                     " made pictures come");
        console.note(place + "the camera at port " + std::to_string(*port) + " feeds it");
        cameras.select(*port);
    } else if (choice.port) {
        if (std::ranges::find(ports, *choice.port, &CameraPort::number) == ports.end())
            throw std::runtime_error(place + "there is no camera at port " + std::to_string(*choice.port) +
                                     ", but at " + cameras.describePorts());
        cameras.select(*choice.port);
    }
    return choice.port || choice.isProbed || ports.size() <= 1;
}

void declareCameraOptions(CLI::App& command, CameraOptions& options)
{
    CLI::Option* const noCamera = command.add_flag("--no-camera", options.areLeftAlone,
                                                   "Leave the cameras alone; do not connect or start them");
    command
        .add_option("--set", options.settings,
                    "Set a parameter of each camera before it starts, such as ExposureTime=5000; can be "
                    "given several times")
        ->type_name(kSettingForm)
        ->allow_extra_args(false)
        ->check(checkSetting)
        ->excludes(noCamera);
    command
        .add_option("--board-set", options.boardSettings,
                    "Set a parameter of each channel's board, such as BRD_FORMAT=3; can be given several "
                    "times")
        ->type_name(kSettingForm)
        ->allow_extra_args(false)
        ->check(checkBoardSetting);
    command
        .add_option_function<std::string>(
            "--roi", [&options](const std::string& text) { options.region = parseRegion(text); },
            "The part of the sensor to grab, in pixels; sets each camera and each board")
        ->type_name(kRegionForm)
        ->check([](const std::string& text) {
            return parseRegion(text) ? "" : text + " is no region such as 640x480 or 640x480+32+16";
        });
    command.add_flag("--keep-going", options.isKeptGoing,
                     "Grab even if a setting is refused; without it, the first refusal ends the grab");
    command
        .add_flag("--action", options.isByActionCommand,
                  "Take each picture by one action command, on all GigE Vision cameras of a board at once")
        ->excludes(noCamera);
}

}   // namespace orvo::aikctl
