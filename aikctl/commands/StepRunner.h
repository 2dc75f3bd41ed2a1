#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "aik/aik.hpp"
#include "aikctl/commands/Step.h"

namespace orvo::aikctl {

class Console;

struct StepOptions {
    bool isJson = false;                        // keep what steps read for results(), instead of printing it
    bool isBare = false;                        // print values without names, and those of set as well
    bool isAsIs = false;                        // write texts unchecked
    bool hasCamera = false;                     // the cameras of the board are connected
    std::chrono::duration<double> timeout{5};   // the longest wait for one picture
};

/// Carries out steps on one open channel, and prints what they read. A wait ends early when the user asks the
/// program to end.
class StepRunner {
public:
    /// Channel and console outlive this.
    StepRunner(aik::Channel& channel, Console& console, const StepOptions& options)
        : m_channel(channel), m_console(console), m_options(options)
    {}
    StepRunner(const StepRunner&) = delete;
    StepRunner& operator=(const StepRunner&) = delete;
    ~StepRunner();   // ends; a failure is ignored

    /// Throws runtime_error that names channel, step, and the port and key that it works on. `number`: of the
    /// step, from 1; 0 if it is the only one.
    void carryOut(const Step& step, size_t number);

    /// Stops the channel if a step has started it and none has stopped it. Throws aik::Error.
    void end();

    /// For programs: "readings" and "pictures".
    nlohmann::ordered_json results() const { return {{"readings", m_readings}, {"pictures", m_pictures}}; }

private:
    void carryOut(const Step& step);
    void set(const Step& step);
    void expect(const Step& step) const;
    void wait(uint64_t pictures) const;
    void grab(uint64_t pictures);
    void sleep(std::chrono::milliseconds time) const;
    void tell(const std::string& feature, const std::string& value);
    void tell(const aik::Picture& picture);
    std::string place(const Step& step, size_t number) const;
    std::string hintAbout(const std::string& feature) const;
    std::optional<std::string> tryToRead(const std::string& feature) const;

    aik::Channel& m_channel;
    Console& m_console;
    const StepOptions m_options;
    bool m_isRunning = false;
    nlohmann::ordered_json m_readings = nlohmann::ordered_json::array();
    nlohmann::ordered_json m_pictures = nlohmann::ordered_json::array();
};

}   // namespace orvo::aikctl
