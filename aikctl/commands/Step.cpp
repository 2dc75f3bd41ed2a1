#include "aikctl/commands/Step.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "aikctl/commands/Command.h"

namespace orvo::aikctl {

namespace {

using Operand = StepWord::Operand;

constexpr uint64_t kHighestNumber = 1'000'000'000;

constexpr const char* kFeatureHelp = "Its name, as `features` shows it";

constexpr StepWord kWords[] = {
    {"get", Step::Kind::Get, Operand::Feature, "FEATURE", kFeatureHelp},
    {"set", Step::Kind::Set, Operand::Assignment, "FEATURE=VALUE", "Its name and the text to write"},
    {"exec", Step::Kind::Execute, Operand::Feature, "FEATURE", kFeatureHelp},
    {"expect", Step::Kind::Expect, Operand::Assignment, "FEATURE=VALUE", "Fails unless it reads so"},
    {"setup", Step::Kind::Setup, Operand::None, "", "Sets up the channel"},
    {"start", Step::Kind::Start, Operand::None, "", "Starts the channel"},
    {"wait", Step::Kind::Wait, Operand::Number, "N", "Until so many pictures have come since the start"},
    {"grab", Step::Kind::Grab, Operand::Number, "N", "Fetches so many pictures"},
    {"stop", Step::Kind::Stop, Operand::None, "", "Stops the channel"},
    {"sleep", Step::Kind::Sleep, Operand::Number, "MS", "Does nothing for so many milliseconds"},
};

const StepWord& requireStepWord(const std::string& word)
{
    if (const StepWord* const row = findStepWord(word))
        return *row;
    throw std::runtime_error(word + " is no step: " + describeSteps());
}

std::string formOf(const StepWord& row)
{
    return row.operand == Operand::None ? row.word : std::string(row.word) + " " + row.form;
}

Step stepOf(const StepWord& row, const std::string& operand)
{
    Step step{row.kind};
    if (row.operand == Operand::Feature) {
        step.feature = operand;
    } else if (row.operand == Operand::Assignment) {
        const size_t sign = operand.find('=');
        if (sign == std::string::npos)
            throw std::runtime_error(std::string(row.word) + " " + operand + " has no value: " + formOf(row));
        step.feature = operand.substr(0, sign);
        step.value = operand.substr(sign + 1);
    } else if (row.operand == Operand::Number) {
        const std::string complaint = wholeNumber(0, kHighestNumber)(operand);
        if (!complaint.empty())
            throw std::runtime_error(std::string(row.word) + ": " + complaint);
        step.number = std::stoull(operand);
    }
    return step;
}

}   // namespace

std::string Step::text() const
{
    const StepWord& row = *std::ranges::find(kWords, kind, &StepWord::kind);
    std::string word = row.word;
    if (isOn)
        return word + " " + feature + (*isOn ? " --on" : " --off");
    switch (row.operand) {
    case Operand::Feature:
        return word + " " + feature;
    case Operand::Assignment:
        return word + " " + feature + "=" + value;
    case Operand::Number:
        return word + " " + std::to_string(number);
    default:
        return word;
    }
}

const StepWord* findStepWord(const std::string& word)
{
    const auto* const row = std::ranges::find(kWords, word, &StepWord::word);
    return row == std::end(kWords) ? nullptr : row;
}

std::string describeSteps()
{
    std::string all;
    for (const StepWord& row : kWords) {
        if (&row != kWords)
            all += &row + 1 == std::end(kWords) ? " or " : ", ";
        all += formOf(row);
    }
    return all;
}

std::vector<Step> parseSteps(const std::vector<std::string>& words)
{
    std::vector<Step> steps;
    for (auto word = words.begin(); word != words.end(); ++word) {
        const StepWord& row = requireStepWord(*word);
        if (row.operand != Operand::None && ++word == words.end())
            throw std::runtime_error(std::string(row.word) + " lacks its " + row.form);
        steps.push_back(stepOf(row, *word));
    }
    return steps;
}

}   // namespace orvo::aikctl
