#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "aikctl/adapter/BoardCameras.h"

namespace orvo::aikctl {

class Console;

/// What a grab sets in boards and cameras, and how it takes pictures.
struct CameraOptions {
    bool areLeftAlone = false;                // the cameras
    std::vector<std::string> settings;        // parameters to set in every camera, as NAME=VALUE
    std::vector<std::string> boardSettings;   // parameters to set in the board of every channel, likewise
    std::optional<aik::Geometry> region;      // of the sensor that the pictures show, for cameras and boards
    bool isKeptGoing = false;                 // grab although a setting was refused
    bool isByActionCommand = false;           // take each picture by an action command
};

/// The cameras of all boards that a grab fetches from, and the settings of both. Call in this order: connect()
/// for each channel after its setup(), start(), shoot() any number of times, stop(), close().
/// Threads: one; only shoot() may run beside image functions.
/// Throws:  runtime_error from connect(), for the first thing that is asked for and refused, unless the grab is
///          to be kept going; the console then hears of all. Other failures are notes, because a board can
///          deliver without a camera that this program controls.
class GrabCameras {
public:
    /// Both outlive this.
    GrabCameras(const CameraOptions& options, Console& console) : m_options(options), m_console(console) {}

    /// Connects the cameras of the channel's board, and sets both up.
    void connect(aik::Channel& channel);
    void start();
    /// Sends an action command on each board. Returns whether all of them were sent.
    bool shoot();
    void stop();
    void close();

    /// A board with what the grab fetches from it.
    struct Board {
        explicit Board(aik::Channel& channel) : cameras(channel), channels{&channel} {}

        BoardCameras cameras;
        std::vector<const aik::Channel*> channels;
    };
    const std::deque<Board>& boards() const { return m_boards; }

private:
    using Setter = std::function<Written(const std::string& name, const std::string& value)>;

    Board* join(aik::Channel& channel);
    void prepare(BoardCameras& cameras);
    void arm(BoardCameras& cameras) const;
    void requireOffsets(aik::Channel& channel, const aik::Geometry& geometry);
    void setBoard(aik::Channel& channel, bool hasCameras);
    /// Sets each NAME=VALUE; `place` is for the console.
    void apply(const std::string& place, const std::vector<std::string>& settings, const Setter& set);
    void noteUnfilledPictures(Board& board, const CameraPort& port);
    void forEachCamera(const std::string& doing, void (BoardCameras::*step)());
    void refuse(const std::string& text);

    const CameraOptions& m_options;
    Console& m_console;
    std::deque<Board> m_boards;
};

}   // namespace orvo::aikctl
