#pragma once

#include "aikctl/Command.h"

namespace orvo::aikctl {

/// `reference`: a page about the features of all kinds of channels, made from the running adapter. Connects
/// cameras to see when which feature is available.
class ReferenceCommand : public Command {
public:
    CLI::App* declare(CLI::App& program) override;
    void run(const Adapter& adapter, const CommonOptions& common, Console& console) override;
};

}   // namespace orvo::aikctl
