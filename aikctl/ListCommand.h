#pragma once

#include "aikctl/Command.h"

namespace orvo::aikctl {

/// `list`: every channel with its name, size and board, and why it failed if it did.
class ListCommand : public Command {
public:
    CLI::App* declare(CLI::App& program) override;
    void run(const Adapter& adapter, const CommonOptions& common, Console& console) override;
};

}   // namespace orvo::aikctl
