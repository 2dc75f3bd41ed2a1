#include "aikctl/grab/GrabCameras.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "aikctl/adapter/Parameters.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

std::string sizeText(int64_t width, int64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

/// Offsets limit the size, and the size limits the offsets.
std::vector<std::string> settingsOf(const aik::Geometry& region)
{
    return {"OffsetX=0",
            "OffsetY=0",
            "Width=" + std::to_string(region.width),
            "Height=" + std::to_string(region.height),
            "OffsetX=" + std::to_string(region.xOffset),
            "OffsetY=" + std::to_string(region.yOffset)};
}

}   // namespace

void GrabCameras::connect(aik::Channel& channel)
{
    if (!channel.failure().empty())
        return;
    const Board* const board = m_options.areLeftAlone ? nullptr : join(channel);
    setBoard(channel, board && !board->cameras.ports().empty());
}

/// The board of the channel; null if its cameras are controlled elsewhere.
GrabCameras::Board* GrabCameras::join(aik::Channel& channel)
{
    Board& board = m_boards.emplace_back(channel);
    bool isOurs = true;
    try {
        isOurs = board.cameras.connect();
        if (isOurs && board.cameras.ports().empty())
            m_console.note(placeOf(channel) + ": no camera was found");
    } catch (const std::exception& failure) {
        const std::string text = placeOf(channel) + ": search for cameras: " + failure.what();
        const bool isNeeded = !m_options.settings.empty() || m_options.region || m_options.isByActionCommand;
        if (isNeeded)
            refuse(text);
        else
            m_console.note(text);
    }
    if (isOurs) {
        prepare(board.cameras);
        return &board;
    }
    m_boards.pop_back();
    const auto first = std::ranges::find_if(m_boards, [&](const Board& known) {
        return known.channels.front()->boardText() == channel.boardText();
    });
    if (first == m_boards.end())
        return nullptr;
    first->channels.push_back(&channel);
    return &*first;
}

void GrabCameras::prepare(BoardCameras& cameras)
{
    std::vector<std::string> settings = m_options.settings;
    if (m_options.region)
        std::ranges::copy(settingsOf(*m_options.region), std::back_inserter(settings));
    for (const CameraPort& port : cameras.ports()) {
        const std::string place = placeOf(cameras.channel(), port);
        const auto set = [&](const std::string& name, const std::string& value) {
            cameras.select(port.number);
            return cameras.setParameter(name, value);
        };
        apply(place, settings, set);
    }
    if (cameras.ports().empty() && !m_options.settings.empty())
        refuse(placeOf(cameras.channel()) + ": " + m_options.settings.front() + ": no camera was found");
    if (m_options.isByActionCommand)
        arm(cameras);
}

void GrabCameras::apply(const std::string& place, const std::vector<std::string>& settings, const Setter& set)
{
    for (const std::string& setting : settings) {
        const size_t sign = setting.find('=');
        const auto told = [&](const std::string& what) {
            return std::string(place).append(": ").append(setting).append(": ").append(what);
        };
        try {
            const Written written = set(setting.substr(0, sign), setting.substr(sign + 1));
            if (!written.note.empty())
                m_console.note(told(written.note));
        } catch (const std::exception& failure) {
            refuse(told(failure.what()));
        }
    }
}

void GrabCameras::arm(BoardCameras& cameras) const
{
    const std::string place = placeOf(cameras.channel());
    if (!cameras.knowsActionCommands())
        throw std::runtime_error(place + ": the cameras of this board know no action commands");
    if (cameras.ports().empty())
        throw std::runtime_error(place + ": no camera was found that an action command could reach");
    for (const CameraPort& port : cameras.ports()) {
        try {
            cameras.select(port.number);
            cameras.armForActionCommands();
        } catch (const std::exception& failure) {
            throw std::runtime_error(placeOf(cameras.channel(), port) +
                                     ": action commands: " + failure.what());
        }
    }
}

void GrabCameras::setBoard(aik::Channel& channel, bool hasCameras)
{
    if (m_options.boardSettings.empty() && !m_options.region)
        return;
    apply(placeOf(channel), m_options.boardSettings, [&](const std::string& name, const std::string& value) {
        return writeParameter(channel, kBoardParameters, name, value);
    });
    aik::Geometry geometry = m_options.region.value_or(aik::Geometry{channel.width(), channel.height()});
    if (hasCameras)   // the camera cuts the region out, and the board takes all of it
        geometry.xOffset = geometry.yOffset = 0;
    try {
        channel.setup(geometry);
    } catch (const std::exception& failure) {
        refuse(placeOf(channel) + ": setup of " + sizeText(geometry.width, geometry.height) + ": " +
               failure.what());
    }
    if (m_options.region)
        requireOffsets(channel, geometry);
}

/// The setup doesn't tell of an offset that the board refuses.
void GrabCameras::requireOffsets(aik::Channel& channel, const aik::Geometry& geometry)
{
    for (const auto& [name, wanted] :
         {std::pair("BRD_XOFFSET", geometry.xOffset), {"BRD_YOFFSET", geometry.yOffset}}) {
        const auto offset = readParameter(channel, kBoardParameters, name);
        if (offset && offset->value != std::to_string(wanted))
            refuse(placeOf(channel) + ": " + name + "=" + std::to_string(wanted) + ": it reads back as " +
                   offset->value);
    }
}

void GrabCameras::start()
{
    for (Board& board : m_boards)
        for (const CameraPort& port : board.cameras.ports())
            noteUnfilledPictures(board, port);
    forEachCamera("start", &BoardCameras::start);
}

void GrabCameras::noteUnfilledPictures(Board& board, const CameraPort& port)
{
    const auto smallest = [&](auto size) {
        const auto* const channel = *std::ranges::min_element(
            board.channels, {}, [&](const aik::Channel* known) { return (known->*size)(); });
        return int64_t{(channel->*size)()};
    };
    try {
        board.cameras.select(port.number);
        const auto width = board.cameras.integerParameter("Width");
        const auto height = board.cameras.integerParameter("Height");
        const int64_t neededWidth = smallest(&aik::Channel::width);
        const int64_t neededHeight = smallest(&aik::Channel::height);
        if (width && height && (*width < neededWidth || *height < neededHeight))
            m_console.note(placeOf(board.cameras.channel(), port) + ": the camera sends " +
                           sizeText(*width, *height) + " and does not fill the board's pictures of " +
                           sizeText(neededWidth, neededHeight) + "; --roi sets both");
    } catch (const std::exception&) {   // a camera that doesn't answer is told of when it is started
    }
}

bool GrabCameras::shoot()
{
    bool areAllSent = true;
    for (Board& board : m_boards) {
        try {
            areAllSent = board.cameras.sendActionCommand() && areAllSent;
        } catch (const std::exception& failure) {
            m_console.fail(placeOf(board.cameras.channel()) + ": action command: " + failure.what());
            areAllSent = false;
        }
    }
    return areAllSent;
}

void GrabCameras::stop()
{
    forEachCamera("stop", &BoardCameras::stop);
}

void GrabCameras::close()
{
    for (Board& board : m_boards) {
        try {
            board.cameras.close();
        } catch (const std::exception& failure) {
            m_console.note(placeOf(board.cameras.channel()) + ": closing the cameras: " + failure.what());
        }
    }
}

void GrabCameras::forEachCamera(const std::string& doing, void (BoardCameras::*step)())
{
    for (Board& board : m_boards) {
        for (const CameraPort& port : board.cameras.ports()) {
            try {
                board.cameras.select(port.number);
                (board.cameras.*step)();
            } catch (const std::exception& failure) {
                m_console.note(placeOf(board.cameras.channel(), port) + ": " + doing +
                               " of the camera: " + failure.what());
            }
        }
    }
}

void GrabCameras::refuse(const std::string& text)
{
    if (!m_options.isKeptGoing)
        throw std::runtime_error(text);
    m_console.fail(text);
}

}   // namespace orvo::aikctl
