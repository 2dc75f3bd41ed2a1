#include "aikctl/StepsCommand.h"

#include <algorithm>
#include <ostream>

#include <CLI/CLI.hpp>

#include "aikctl/Adapter.h"
#include "aikctl/AdapterFailure.h"
#include "aikctl/BoardCameras.h"
#include "aikctl/Console.h"
#include "aikctl/FeatureText.h"
#include "aikctl/connectCameras.h"
#include "aikctl/toJsonText.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kManySteps = "do";

struct VerbRow {
    const char* verb;
    const char* help;
    const char* operand;
    const char* operandHelp;
};

constexpr VerbRow kVerbs[] = {
    {kManySteps, "Does steps on one open channel, in their order", "STEP",
     "get FEATURE, set FEATURE=VALUE or exec FEATURE, any number of them"},
    {"get", "Reads a feature", "FEATURE", "Its name, as `features` shows it"},
    {"set", "Writes a feature", "FEATURE=VALUE", "Its name and the text to write"},
    {"exec", "Executes a command feature", "FEATURE", "Its name, as `features` shows it"},
};

const VerbRow& rowOf(const std::string& verb)
{
    return *std::find_if(std::begin(kVerbs), std::end(kVerbs),
                         [&](const VerbRow& row) { return row.verb == verb; });
}

}   // namespace

CLI::App* StepsCommand::declare(CLI::App& program)
{
    const VerbRow& row = rowOf(m_verb);
    CLI::App* const command = program.add_subcommand(m_verb, row.help);
    command->add_option("CHANNEL", m_channel, "Its number, as `list` shows it")
        ->required()
        ->check(CLI::NonNegativeNumber);
    CLI::Option* const words = command->add_option(row.operand, m_words, row.operandHelp)->required();
    if (isSingle())
        words->expected(1);
    command->add_flag("--camera", m_isWithCamera,
                      "Connect the cameras of the board first and close them at the end");
    command->add_option("--port", m_port, "With --camera: select the camera at this port, not the first one")
        ->needs("--camera")
        ->check(CLI::NonNegativeNumber);
    command->add_option("-k,--key", m_key,
                        "The parameter's name that the features Brd...Value and Camera...Value, and "
                        "CameraCommand, need");
    command->parse_complete_callback([this] { settle(); });
    return command;
}

bool StepsCommand::isSingle() const
{
    return m_verb != kManySteps;
}

/// Makes steps of the words. What makes no sense is the command line's fault.
void StepsCommand::settle()
{
    try {
        m_steps = isSingle() ? parseSteps({m_verb, m_words.front()}) : parseSteps(m_words);
        if (!m_key.empty())
            insertKey();
    } catch (const std::runtime_error& nonsense) {
        throw CLI::ValidationError(m_verb, nonsense.what());
    }
}

/// Right before the first step that needs it, of board and camera each.
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

void StepsCommand::run(const Adapter& adapter, const CommonOptions& common, Console& console)
{
    Channel channel = adapter.open(m_channel);
    BoardCameras cameras(channel);
    auto readings = nlohmann::ordered_json::array();
    try {
        if (m_isWithCamera)
            connectCameras(cameras, console);
        if (m_port)
            cameras.select(*m_port);
        for (const Step& step : m_steps) {
            try {
                const auto value = carryOut(step, channel);
                if (!value)
                    continue;
                if (common.json)
                    readings.push_back({{"feature", step.feature}, {"value", *value}});
                else
                    console.out() << (isSingle() ? "" : step.feature + "=") << *value << std::endl;
            } catch (const AdapterFailure& failure) {
                const bool isCameraMissing = saysNotAvailable(failure.what()) && !m_isWithCamera;
                throw std::runtime_error(
                    step.text() + ": " + failure.what() +
                    (isCameraMissing ? "\nWhat belongs to a camera needs it connected: --camera does that"
                                     : ""));
            }
        }
    } catch (const std::exception& failure) {
        console.fail(failure.what());   // and the channel is left in order
    }
    if (common.json)
        console.out() << toJsonText({{"channel", m_channel}, {"readings", readings}}) << std::endl;
    cameras.close();
    channel.release();
}

}   // namespace orvo::aikctl
