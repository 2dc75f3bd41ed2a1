#include "aikctl/grab/GrabCameras.h"

#include <exception>
#include <stdexcept>

#include "aikctl/console/Console.h"

namespace orvo::aikctl {

void GrabCameras::connect(aik::Channel& channel)
{
    if (m_options.areLeftAlone || !channel.failure().empty())
        return;
    BoardCameras& cameras = m_boards.emplace_back(channel);
    bool isOurs = true;
    attempt(Failing::IsANote, cameras, [&](BoardCameras& board) { isOurs = board.connect(); });
    if (isOurs)
        attempt(Failing::FailsTheGrab, cameras, [this](BoardCameras& board) { prepare(board); });
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
    attemptAll(Failing::IsANote, &BoardCameras::startAll);
}

void GrabCameras::shoot()
{
    attemptAll(Failing::FailsTheGrab, [](BoardCameras& cameras) {
        if (!cameras.ports().empty() && cameras.knowsActionCommands())
            cameras.sendActionCommand();
    });
}

void GrabCameras::stop()
{
    attemptAll(Failing::IsANote, &BoardCameras::stopAll);
}

void GrabCameras::close()
{
    attemptAll(Failing::IsANote, &BoardCameras::close);
}

void GrabCameras::attempt(Failing failing, BoardCameras& cameras, const Step& step)
{
    try {
        step(cameras);
    } catch (const std::exception& failure) {
        const std::string text =
            "cameras of channel " + std::to_string(cameras.channel().index()) + ": " + failure.what();
        if (failing == Failing::FailsTheGrab)
            m_console.fail(text);
        else
            m_console.note(text);
    }
}

void GrabCameras::attemptAll(Failing failing, const Step& step)
{
    for (BoardCameras& cameras : m_boards)
        attempt(failing, cameras, step);
}

}   // namespace orvo::aikctl
