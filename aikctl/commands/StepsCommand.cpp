#include <algorithm>
#include <ostream>
#include <stdexcept>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/adapter/Parameters.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/commands/Step.h"
#include "aikctl/console/Console.h"
#include "aikctl/console/Text.h"

namespace orvo::aikctl {

namespace {

constexpr uint64_t kHighestPort = 255;

/// `do`: any number of steps on one open channel, in their order. Under the name of a step, such as `get`, it
/// is that one step.
class StepsCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    void settle();
    void insertKey();
    std::optional<std::string> carryOutStep(const Step& step, aik::Channel& channel) const;

    std::string m_name;
    bool m_isSingle = false;
    ChannelChoice m_channel;
    std::vector<std::string> m_words;
    std::vector<Step> m_steps;   // that the words ask for
    bool m_isWithCamera = false;
    std::optional<int32_t> m_port;
    std::string m_key;
};

void StepsCommand::declare(CLI::App& self)
{
    m_name = self.get_name();
    declareChannel(self, m_channel);
    if (const StepWord* const step = findStepWord(m_name)) {
        m_isSingle = true;
        self.add_option(step->operand, m_words, step->help)->expected(1);
    } else {
        self.add_option("STEP", m_words, describeSteps() + ", any number of them");
    }
    self.add_flag("--camera", m_isWithCamera,
                  "Connect the cameras of the board first and close them at the end");
    self.add_option("--port", m_port, "With --camera: select the camera at this port, not the first one")
        ->needs("--camera")
        ->check(wholeNumber(0, kHighestPort));
    self.add_option("-k,--key", m_key,
                    "The parameter's name, for the features Brd...Value, Camera...Value and CameraCommand");
    self.parse_complete_callback([this] { settle(); });
}

/// Makes steps of the words. Words that make no sense are wrong usage.
void StepsCommand::settle()
{
    settleChannel(m_channel, m_words);
    if (m_words.empty())
        throw CLI::RequiredError(m_isSingle ? findStepWord(m_name)->operand : "STEP");
    if (m_isSingle && m_words.size() > 1)
        throw CLI::ExcludesError("CHANNEL", "--board");
    try {
        m_steps = m_isSingle ? parseSteps({m_name, m_words.front()}) : parseSteps(m_words);
        if (!m_key.empty())
            insertKey();
    } catch (const std::runtime_error& nonsense) {
        throw CLI::ValidationError(m_name, nonsense.what());
    }
}

/// Sets the key right before the first step that needs it, for board and camera each.
void StepsCommand::insertKey()
{
    bool isNeeded = false;
    for (const char* const keyFeature : {"BrdFeatureKey", "CameraFeatureKey"}) {
        const auto user = std::find_if(m_steps.begin(), m_steps.end(), [&](const Step& step) {
            return keyFeatureOf(step.feature) == keyFeature;
        });
        if (user == m_steps.end())
            continue;
        m_steps.insert(user, {Step::Kind::Set, keyFeature, m_key});
        isNeeded = true;
    }
    if (!isNeeded)
        throw std::runtime_error("--key " + m_key + " is for none of the features");
}

void StepsCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    aik::Channel channel = openChannel(adapter, m_channel);
    BoardCameras cameras(channel);
    auto readings = nlohmann::ordered_json::array();
    try {
        if (m_isWithCamera)
            connectCameras(cameras, console);
        if (m_port)
            cameras.select(*m_port);
        for (const Step& step : m_steps) {
            const auto value = carryOutStep(step, channel);
            if (!value)
                continue;
            if (common.json)
                readings.push_back({{"feature", step.feature}, {"value", *value}});
            else
                console.out() << (m_isSingle ? "" : step.feature + "=") << readable(*value) << std::endl;
        }
    } catch (const std::exception& failure) {
        console.fail(failure.what());   // cameras and channel are closed all the same
    }
    if (common.json)
        console.print({{"channel", channel.index()}, {"readings", readings}});
    cameras.close();
    channel.release();
}

/// Throws runtime_error that names the step.
std::optional<std::string> StepsCommand::carryOutStep(const Step& step, aik::Channel& channel) const
{
    try {
        return carryOut(step, channel);
    } catch (const aik::Error& failure) {
        const bool isCameraMissing = failure.isFeatureUnavailable() && !m_isWithCamera;
        throw std::runtime_error(
            step.text() + ": " + failure.what() +
            (isCameraMissing ? "\nWhat belongs to a camera needs it connected: --camera does that" : ""));
    }
}

}   // namespace

std::unique_ptr<Command> makeStepsCommand()
{
    return std::make_unique<StepsCommand>();
}

}   // namespace orvo::aikctl
