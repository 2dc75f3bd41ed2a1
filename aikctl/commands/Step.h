#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvo::aikctl {

/// A thing to do with an open channel.
struct Step {
    enum class Kind { Get, Set, Execute, Expect, Setup, Start, Wait, Grab, Stop, Sleep };

    Kind kind;
    std::string feature = {};
    std::string key = {};            // to set first, for a feature that needs one; empty leaves it alone
    std::string value = {};          // to set or to expect
    uint64_t number = 0;             // of pictures, or of milliseconds
    std::optional<bool> isOn = {};   // to set, instead of the value

    /// As it is written on the command line.
    std::string text() const;
};

/// A word that begins a step, and the one that must follow it.
struct StepWord {
    enum class Operand { None, Feature, Assignment, Number };

    const char* word;
    Step::Kind kind;
    Operand operand;
    const char* form;   // of the operand
    const char* help;
};

/// Null if no step begins with `word`.
const StepWord* findStepWord(const std::string& word);
/// The forms of all steps, for people.
std::string describeSteps();

/// The steps that these words ask for, any number of them. Throws runtime_error that says which word makes no
/// sense.
std::vector<Step> parseSteps(const std::vector<std::string>& words);

}   // namespace orvo::aikctl
