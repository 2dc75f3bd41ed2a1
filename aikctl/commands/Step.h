#pragma once

#include <optional>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// A thing to do with a feature of an open channel.
struct Step {
    enum class Kind { Get, Set, Execute };

    Kind kind;
    std::string feature;
    std::string value;   // to set

    /// As it is written on the command line.
    std::string text() const;
};

/// A word that begins a step, and the one that must follow it.
struct StepWord {
    const char* word;
    Step::Kind kind;
    const char* operand;   // its form
    const char* help;      // about the operand
};

/// Null if no step begins with `word`.
const StepWord* findStepWord(const std::string& word);
/// The forms of all steps, for people.
std::string describeSteps();

/// The steps that these words ask for, any number of them. Throws runtime_error that says which word makes no
/// sense.
std::vector<Step> parseSteps(const std::vector<std::string>& words);

/// Does it; returns what a get has read. Throws aik::Error.
std::optional<std::string> carryOut(const Step& step, aik::Channel& channel);

}   // namespace orvo::aikctl
