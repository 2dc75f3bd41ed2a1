#include <algorithm>
#include <stdexcept>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/adapter/Parameters.h"
#include "aikctl/commands/CameraOptions.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/commands/StepRunner.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

/// `do`: any number of steps on one open channel, in their order. Under the name of a step, such as `get`, it
/// is that one step.
class StepsCommand : public Command {
public:
    void declare(CLI::App& self) override;
    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override;

private:
    void settle();
    void makeSteps();
    void insertKey();
    void carryOut(BoardCameras& cameras, StepRunner& runner, Console& console);

    std::string m_name;
    bool m_isSingle = false;
    ChannelChoice m_channel;
    std::vector<std::string> m_words;
    std::vector<Step> m_steps;   // that the words ask for
    CameraChoice m_camera;
    std::string m_key;
    bool m_isAsIs = false;
    std::optional<bool> m_isOn;
    double m_timeoutSeconds = 5;
};

void StepsCommand::declare(CLI::App& self)
{
    m_name = self.get_name();
    declareChannel(self, m_channel);
    const StepWord* const word = findStepWord(m_name);
    m_isSingle = word;
    if (word)
        self.add_option(word->form, m_words, word->help)->expected(1);
    else
        self.add_option("STEP", m_words, describeSteps() + ", any number of them");
    declareCameraChoice(self, m_camera);
    self.add_option("-k,--key", m_key,
                    "The parameter's name, for the features Brd...Value, Camera...Value and CameraCommand");
    if (!word || word->kind == Step::Kind::Set)
        self.add_flag("--as-is", m_isAsIs, "Write texts as they are, and don't compare what reads back");
    if (word && word->kind == Step::Kind::Set) {
        CLI::Option* const on = self.add_flag_callback(
            "--on", [this] { m_isOn = true; }, "Switch a boolean feature on; then without =VALUE");
        self.add_flag_callback(
                "--off", [this] { m_isOn = false; }, "Switch it off")
            ->excludes(on);
    }
    self.add_option("-t,--timeout", m_timeoutSeconds, "The longest wait for one picture, in seconds")
        ->check(secondsUpTo(kLongestWaitSeconds))
        ->capture_default_str();
    self.parse_complete_callback([this] { settle(); });
}

/// Makes steps of the words. Words that make no sense are wrong usage.
void StepsCommand::settle()
{
    settleChannel(m_channel, m_words);
    if (m_words.empty())
        throw CLI::RequiredError(m_isSingle ? findStepWord(m_name)->form : "STEP");
    if (m_isSingle && m_words.size() > 1)
        throw CLI::ExcludesError("CHANNEL", "--board");
    try {
        makeSteps();
        if (!m_key.empty())
            insertKey();
    } catch (const std::runtime_error& nonsense) {
        throw CLI::ValidationError(m_name, nonsense.what());
    }
}

void StepsCommand::makeSteps()
{
    if (!m_isSingle) {
        m_steps = parseSteps(m_words);
    } else if (!m_isOn) {
        m_steps = parseSteps({m_name, m_words.front()});
    } else {
        if (m_words.front().find('=') != std::string::npos)
            throw std::runtime_error(m_words.front() + ": --on and --off take the place of =VALUE");
        m_steps = {{.kind = Step::Kind::Set, .feature = m_words.front(), .isOn = m_isOn}};
    }
}

/// Sets the key right before the first step that needs it, for board and camera each.
void StepsCommand::insertKey()
{
    bool isNeeded = false;
    for (const ParameterAccess* const access : {&kBoardParameters, &kCameraParameters}) {
        const auto user = std::ranges::find_if(
            m_steps, [&](const Step& step) { return keyFeatureOf(step.feature) == access->keyFeature; });
        if (user == m_steps.end())
            continue;
        isNeeded = true;
        user->key = m_key;
    }
    if (!isNeeded)
        throw std::runtime_error("--key " + m_key + " is for none of the features");
}

void StepsCommand::run(const aik::Adapter& adapter, const CommonOptions& common, Console& console)
{
    const std::chrono::duration<double> timeout(m_timeoutSeconds);
    m_camera.patience = timeout;
    aik::Channel channel = openChannel(adapter, m_channel);
    BoardCameras cameras(channel);
    StepRunner runner(channel, console,
                      {.isJson = common.json,
                       .isBare = m_isSingle,
                       .isAsIs = m_isAsIs,
                       .hasCamera = m_camera.isConnected,
                       .timeout = timeout});
    try {
        carryOut(cameras, runner, console);
    } catch (const std::exception& failure) {
        console.fail(failure.what());   // cameras and channel are closed all the same
    }
    if (common.json) {
        nlohmann::ordered_json results = {{"channel", channel.index()}};
        results.update(runner.results());
        console.print(results);
    }
    runner.end();
    closeCameras(cameras, console);
    channel.release();
}

void StepsCommand::carryOut(BoardCameras& cameras, StepRunner& runner, Console& console)
{
    bool isChosen = true;
    if (m_camera.isConnected)
        isChosen = connectCamera(cameras, m_camera, console);
    size_t number = 0;
    for (const Step& step : m_steps) {
        isChosen = isChosen || (step.kind == Step::Kind::Set && step.feature == "PortIndex");
        if (!isChosen && concernsSelectedCamera(step.feature))
            throw std::runtime_error(placeOf(cameras.channel()) + ": " + step.text() +
                                     ": the board has cameras at " + cameras.describePorts() +
                                     ", and nothing tells which one feeds the channel: choose one by --port, "
                                     "or have --probe find out");
        if (console.interrupted())
            return;
        runner.carryOut(step, m_isSingle ? 0 : ++number);
    }
}

}   // namespace

std::unique_ptr<Command> makeStepsCommand()
{
    return std::make_unique<StepsCommand>();
}

}   // namespace orvo::aikctl
