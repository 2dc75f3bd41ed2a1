#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "aikctl/Command.h"
#include "aikctl/Step.h"

namespace orvo::aikctl {

/// `do`: any number of steps on one open channel, in their order. And `get`, `set`, `exec`, which are one step
/// each.
class StepsCommand : public Command {
public:
    /// `verb`: how the command is called.
    explicit StepsCommand(const char* verb) : m_verb(verb) {}

    CLI::App* declare(CLI::App& program) override;
    void run(const Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    bool isSingle() const;
    void settle();
    void insertKey();

    const std::string m_verb;
    int32_t m_channel = 0;
    std::vector<std::string> m_words;
    std::vector<Step> m_steps;   // that the words ask for
    bool m_isWithCamera = false;
    std::optional<int32_t> m_port;
    std::string m_key;
};

}   // namespace orvo::aikctl
