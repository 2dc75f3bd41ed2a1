#include "aikctl/GrabCameras.h"

#include <exception>
#include <stdexcept>

#include "aikctl/Console.h"

namespace orvo::aikctl {

void GrabCameras::connect(Channel& channel)
{
    if (m_options.areLeftAlone || !channel.failure().empty())
        return;
    BoardCameras& cameras = m_boards.emplace_back(channel);
    bool isOurs = true;
    tryTo(
        cameras, [&] { isOurs = cameras.connect(); }, false);
    if (isOurs)
        tryTo(
            cameras, [&] { prepare(cameras); }, true);
    else
        m_boards.pop_back();
}

void GrabCameras::prepare(BoardCameras& cameras) const
{
    for (const int32_t port : cameras.ports()) {
        cameras.select(port);
        for (const std::string& setting : m_options.settings) {
            const size_t sign = setting.find('=');
            try {
                cameras.setParameter(setting.substr(0, sign), setting.substr(sign + 1));
            } catch (const std::exception& failure) {
                throw std::runtime_error("port " + std::to_string(port) + ": " + setting + ": " +
                                         failure.what());
            }
        }
    }
    if (!m_options.isByActionCommand)
        return;
    if (!cameras.knowsActionCommands())
        throw std::runtime_error("cameras of this board know no action commands");
    if (cameras.ports().empty())
        throw std::runtime_error("there is none that an action command could reach");
    cameras.armForActionCommands();
}

void GrabCameras::start()
{
    forEach([](BoardCameras& cameras) { cameras.startAll(); }, false);
}

void GrabCameras::shoot()
{
    forEach(
        [](BoardCameras& cameras) {
            if (!cameras.ports().empty() && cameras.knowsActionCommands())
                cameras.sendActionCommand();
        },
        true);
}

void GrabCameras::stop()
{
    forEach([](BoardCameras& cameras) { cameras.stopAll(); }, false);
}

void GrabCameras::close()
{
    forEach([](BoardCameras& cameras) { cameras.close(); }, false);
}

void GrabCameras::tryTo(BoardCameras& cameras, const std::function<void()>& step, bool isAskedFor)
{
    try {
        step();
    } catch (const std::exception& failure) {
        const std::string text =
            "cameras of channel " + std::to_string(cameras.channel().index()) + ": " + failure.what();
        if (isAskedFor)
            m_console.fail(text);
        else
            m_console.note(text);
    }
}

void GrabCameras::forEach(const std::function<void(BoardCameras&)>& step, bool isAskedFor)
{
    for (BoardCameras& cameras : m_boards)
        tryTo(
            cameras, [&] { step(cameras); }, isAskedFor);
}

}   // namespace orvo::aikctl
