#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/adapter/ParameterNames.h"
#include "aikctl/adapter/Parameters.h"
#include "aikctl/commands/CameraOptions.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"
#include "aikctl/console/Table.h"

namespace orvo::aikctl {

namespace {

struct NamedParameter {
    std::string name;
    Parameter parameter;
};

/// A board or a camera, and the parameters that it has.
struct Device {
    std::string name;   // for people
    std::vector<NamedParameter> parameters;
    const CameraPort* port = nullptr;   // of a camera
};

nlohmann::ordered_json toJson(const Device& device)
{
    auto parameters = nlohmann::ordered_json::array();
    for (const auto& [name, parameter] : device.parameters)
        parameters.push_back({{"name", name}, {"kind", parameter.by->kind}, {"value", parameter.value}});
    return parameters;
}

std::vector<NamedParameter> readAll(aik::Channel& channel, const ParameterAccess& access,
                                    const std::vector<std::string>& names, const Console& console)
{
    std::vector<NamedParameter> all;
    for (const std::string& name : names) {
        if (console.interrupted())
            break;
        if (auto parameter = readParameter(channel, access, name))
            all.push_back({name, std::move(*parameter)});
    }
    return all;
}

/// `params`: the parameters of the channel's board and of its cameras, as far as their names are known.
class ParamsCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    void readCameras(BoardCameras& cameras, std::vector<Device>& devices, Console& console) const;

    ChannelChoice m_channel;
    CameraChoice m_camera{.isConnected = true};
    bool m_isWithoutCamera = false;
};

void ParamsCommand::declare(CLI::App& self)
{
    declareChannel(self, m_channel);
    CLI::Option* const port =
        declarePort(self, m_camera.port, "Only the camera at this port, not all of the board");
    self.add_flag("--no-camera", m_isWithoutCamera, "Leave the cameras alone; only the board's parameters")
        ->excludes(port);
}

void ParamsCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    aik::Channel channel = openChannel(adapter, m_channel);
    BoardCameras cameras(channel);
    std::vector<Device> devices = {
        {"board", readAll(channel, kBoardParameters, boardParameterNames(), console)}};
    try {
        if (!m_isWithoutCamera)
            readCameras(cameras, devices, console);
    } catch (const std::exception& failure) {
        console.fail(failure.what());   // the board's parameters are shown all the same
    }
    if (common.json) {
        nlohmann::ordered_json result = {{"channel", channel.index()}, {"board", toJson(devices.front())}};
        auto& list = result["cameras"] = nlohmann::ordered_json::array();
        for (const Device& device : devices)
            if (device.port)
                list.push_back({{"port", device.port->number},
                                {"name", device.port->cameraName},
                                {"parameters", toJson(device)}});
        console.print(result);
    } else {
        Table table({"of", "name", "kind", "value"});
        for (const Device& device : devices)
            for (const auto& [name, parameter] : device.parameters)
                table.add({device.name, name, std::string(parameter.by->kind), parameter.value});
        table.print(console.out(), console.columns());
    }
    closeCameras(cameras, console);
    channel.release();
}

void ParamsCommand::readCameras(BoardCameras& cameras, std::vector<Device>& devices, Console& console) const
{
    connectCamera(cameras, m_camera, console);
    for (const CameraPort& port : cameras.ports()) {
        if (m_camera.port && port.number != *m_camera.port)
            continue;
        const std::string place = placeOf(cameras.channel(), port);
        try {
            cameras.select(port.number);
            devices.push_back({"port " + std::to_string(port.number),
                               readAll(cameras.channel(), kCameraParameters, cameraParameterNames(), console),
                               &port});
            // A camera that doesn't answer refuses a name as one does that doesn't know it.
            const auto& parameters = devices.back().parameters;
            if (parameters.empty() ||
                !readParameter(cameras.channel(), kCameraParameters, parameters.front().name))
                console.fail(place + ": the camera doesn't answer");
        } catch (const aik::Error& failure) {
            console.fail(place + ": " + failure.what());
        }
    }
}

}   // namespace

std::unique_ptr<Command> makeParamsCommand()
{
    return std::make_unique<ParamsCommand>();
}

}   // namespace orvo::aikctl
