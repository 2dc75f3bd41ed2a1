#pragma once

#include <deque>
#include <string>
#include <vector>

#include "aikctl/ChannelGrab.h"
#include "aikctl/Command.h"
#include "aikctl/GrabCameras.h"

namespace orvo::aikctl {

/// `grab`: pictures from chosen channels into files, all channels side by side, and a table of how it went.
class GrabCommand : public Command {
public:
    CLI::App* declare(CLI::App& program) override;
    void run(const Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    using Grabs = std::deque<ChannelGrab>;   // a deque: they stay where they are

    void choose(std::vector<Channel>& channels, const PictureFolder& folder, Grabs& grabs) const;
    void fetch(Grabs& grabs, GrabCameras& cameras, Console& console) const;
    void showProgress(const Grabs& grabs, Console& console) const;

    GrabOptions m_options;
    CameraOptions m_cameraOptions;
    double m_timeoutSeconds = 5;
    std::vector<std::string> m_channels = {"all"};
    std::string m_folder = "pictures";
    bool m_isOverwriting = false;
    bool m_isShowingProgress = false;
};

}   // namespace orvo::aikctl
