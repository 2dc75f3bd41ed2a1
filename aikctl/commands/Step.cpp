#include "aikctl/commands/Step.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace orvo::aikctl {

namespace {

constexpr StepWord kWords[] = {
    {"get", Step::Kind::Get, "FEATURE", "Its name, as `features` shows it"},
    {"set", Step::Kind::Set, "FEATURE=VALUE", "Its name and the text to write"},
    {"exec", Step::Kind::Execute, "FEATURE", "Its name, as `features` shows it"},
};

const StepWord& requireStepWord(const std::string& word)
{
    if (const StepWord* const row = findStepWord(word))
        return *row;
    throw std::runtime_error(word + " is no step: " + describeSteps());
}

Step stepOf(const std::string& word, const std::string& operand)
{
    const StepWord& row = requireStepWord(word);
    if (row.kind != Step::Kind::Set)
        return {row.kind, operand, ""};
    const size_t sign = operand.find('=');
    if (sign == std::string::npos)
        throw std::runtime_error("set " + operand + " has no value: set FEATURE=VALUE");
    return {row.kind, operand.substr(0, sign), operand.substr(sign + 1)};
}

}   // namespace

std::string Step::text() const
{
    const auto* const row = std::ranges::find(kWords, kind, &StepWord::kind);
    return std::string(row->word) + " " + feature + (kind == Kind::Set ? "=" + value : "");
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
        all += std::string(row.word) + " " + row.operand;
    }
    return all;
}

std::vector<Step> parseSteps(const std::vector<std::string>& words)
{
    std::vector<Step> steps;
    for (size_t i = 0; i < words.size(); i += 2) {
        if (i + 1 == words.size()) {
            requireStepWord(words[i]);
            throw std::runtime_error(words[i] + " lacks its feature");
        }
        steps.push_back(stepOf(words[i], words[i + 1]));
    }
    return steps;
}

std::optional<std::string> carryOut(const Step& step, aik::Channel& channel)
{
    switch (step.kind) {
    case Step::Kind::Get:
        return channel.read(step.feature);
    case Step::Kind::Set:
        channel.write(step.feature, step.value);
        break;
    case Step::Kind::Execute:
        channel.execute(step.feature);
        break;
    }
    return std::nullopt;
}

}   // namespace orvo::aikctl
