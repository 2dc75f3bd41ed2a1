#pragma once

#include <cstdint>

#include "aikctl/Command.h"

namespace orvo::aikctl {

/// `features`: the features of a channel as they are now, without changing or executing any.
class FeaturesCommand : public Command {
public:
    CLI::App* declare(CLI::App& program) override;
    void run(const Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    int32_t m_channel = 0;
    bool m_isWithCamera = false;
};

}   // namespace orvo::aikctl
