#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
}

namespace orvo::aikctl {

class BoardCameras;
class Console;

/// The options that all commands have.
struct CommonOptions {
    bool json = false;   // results for programs, not for people
};

/// A command of the program. Declared once, then run at most once.
class Command {
public:
    virtual ~Command() = default;

    /// Adds the command's options to its own part of the command line.
    virtual void declare(CLI::App& self) = 0;
    /// Does the work. The failure of a single channel goes to the console; one that ends it all is thrown.
    virtual void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) = 0;
};

// Each is defined in a file of its own. CommandLine.cpp lists them under their names.
std::unique_ptr<Command> makeListCommand();
std::unique_ptr<Command> makeFeaturesCommand();
std::unique_ptr<Command> makeStepsCommand();
std::unique_ptr<Command> makeParamsCommand();
std::unique_ptr<Command> makeGrabCommand();
std::unique_ptr<Command> makeReferenceCommand();

// What several commands do.

/// For a picture: a day.
constexpr uint64_t kLongestWaitSeconds = 86'400;

/// A check of an option: a whole number in this range, ends included. Returns the complaint, empty for none.
std::function<std::string(const std::string&)> wholeNumber(uint64_t lowest, uint64_t highest);

/// Likewise, of a time: at least a millisecond, and at most so many seconds.
std::function<std::string(const std::string&)> secondsUpTo(uint64_t most);

/// Closes the cameras. A failure goes to the console.
void closeCameras(BoardCameras& cameras, Console& console);
/// Closes the channels in their order. A failure goes to the console, and the rest are closed all the same.
void releaseAll(std::vector<aik::Channel>& channels, Console& console);

}   // namespace orvo::aikctl
