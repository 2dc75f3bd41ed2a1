#include "aikctl/commands/StepRunner.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/CheckedWrite.h"
#include "aikctl/adapter/Parameters.h"
#include "aikctl/console/Console.h"
#include "aikctl/console/Text.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kStepInterval = 5ms;   // at the frame counter, and for Ctrl-C

/// Whether what is written lasts longer than the channel is open: cameras keep it.
bool isKeptByCamera(const std::string& feature)
{
    return keyFeatureOf(feature) == kCameraParameters.keyFeature || feature.ends_with("Remote");
}

}   // namespace

StepRunner::~StepRunner()
{
    try {
        end();
    } catch (const std::exception&) {   // call end() to hear of it
    }
}

void StepRunner::end()
{
    if (std::exchange(m_isRunning, false))
        m_channel.stop();
}

void StepRunner::carryOut(const Step& step, size_t number)
{
    try {
        if (!step.key.empty())
            m_channel.write(keyFeatureOf(step.feature), step.key);
        carryOut(step);
    } catch (const aik::Error& failure) {
        throw std::runtime_error(place(step, number) + failure.what() +
                                 (failure.isFeatureUnavailable() ? hintAbout(step.feature) : ""));
    } catch (const std::exception& failure) {
        throw std::runtime_error(place(step, number) + failure.what());
    }
}

void StepRunner::carryOut(const Step& step)
{
    switch (step.kind) {
    case Step::Kind::Get:
        return tell(step.feature, m_channel.read(step.feature));
    case Step::Kind::Set:
        return set(step);
    case Step::Kind::Execute:
        return m_channel.execute(step.feature);
    case Step::Kind::Expect:
        return expect(step);
    case Step::Kind::Setup:
        return m_channel.setup();
    case Step::Kind::Start:
        m_channel.start();
        m_isRunning = true;
        return;
    case Step::Kind::Wait:
        return wait(step.number);
    case Step::Kind::Grab:
        return grab(step.number);
    case Step::Kind::Stop:
        m_isRunning = false;
        return m_channel.stop();
    case Step::Kind::Sleep:
        return sleep(std::chrono::milliseconds(step.number));
    }
}

void StepRunner::set(const Step& step)
{
    const auto write = m_options.isAsIs ? &writeAsIs : &writeChecked;
    const Written written = step.isOn ? writeSwitch(m_channel, step.feature, *step.isOn)
                                      : write(m_channel, step.feature, step.value);
    if (!written.note.empty())
        m_console.note(step.text() + ": " + written.note);
    if (!m_options.isBare)
        return;
    if (written.value)
        tell(step.feature, *written.value);
    if (!isKeptByCamera(step.feature))
        m_console.note(step.feature +
                       " keeps this value only while this command runs; `do` takes several steps");
}

void StepRunner::expect(const Step& step) const
{
    const std::string value = m_channel.read(step.feature);
    if (!isSameValue(m_channel.feature(step.feature).type, step.value, value))
        throw std::runtime_error("it is " + value);
}

/// The counter doesn't care who fetches the pictures, or whether anybody does.
void StepRunner::wait(uint64_t pictures) const
{
    uint64_t counted = 0;
    auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(m_options.timeout);
    while (!m_console.interrupted()) {
        const auto now = m_channel.read<uint64_t>("FrameCountSinceLastStart");
        if (now >= pictures)
            return;
        if (now != counted)
            deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(m_options.timeout);
        else if (Clock::now() >= deadline)
            throw std::runtime_error("No picture came in time: " + std::to_string(now) + " so far");
        counted = now;
        std::this_thread::sleep_for(kStepInterval);
    }
}

void StepRunner::grab(uint64_t pictures)
{
    for (uint64_t fetched = 0; fetched < pictures && !m_console.interrupted(); ++fetched) {
        const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(m_options.timeout);
        auto picture = m_channel.grab();
        while (!picture && !m_console.interrupted()) {
            if (Clock::now() >= deadline)
                throw std::runtime_error("No picture came in time: " + std::to_string(fetched) + " so far");
            picture = m_channel.grab();
        }
        if (picture)
            tell(*picture);
    }
}

void StepRunner::sleep(std::chrono::milliseconds time) const
{
    const auto end = Clock::now() + time;
    while (Clock::now() < end && !m_console.interrupted())
        std::this_thread::sleep_for(std::min<Clock::duration>(kStepInterval, end - Clock::now()));
}

void StepRunner::tell(const std::string& feature, const std::string& value)
{
    if (m_options.isJson)
        m_readings.push_back({{"feature", feature}, {"value", value}});
    else
        m_console.out() << (m_options.isBare ? "" : feature + "=") << readable(value) << std::endl;
}

void StepRunner::tell(const aik::Picture& picture)
{
    const auto orNull = [](const auto& number) {
        return number ? nlohmann::ordered_json(*number) : nlohmann::ordered_json();
    };
    const nlohmann::ordered_json told = {{"timestamp", orNull(picture.timestamp)},
                                         {"format", orNull(picture.format)},
                                         {"bytes", picture.bytes.size()}};
    m_pictures.push_back(told);
    if (!m_options.isJson)
        m_console.out() << "picture " << m_pictures.size() << ": time stamp " << told["timestamp"]
                        << ", format " << told["format"] << ", " << told["bytes"] << " bytes" << std::endl;
}

std::string StepRunner::place(const Step& step, size_t number) const
{
    std::string all = number == 0 ? "" : "step " + std::to_string(number) + " of ";
    all += placeOf(m_channel);
    if (const auto port = concernsSelectedCamera(step.feature) ? tryToRead("PortIndex") : std::nullopt)
        all += ", port " + *port;
    const std::string keyFeature = keyFeatureOf(step.feature);
    if (const auto key = keyFeature.empty() ? std::nullopt : tryToRead(keyFeature); key && !key->empty())
        all += ", key " + *key;
    return all + ": " + step.text() + ": ";
}

/// Why the feature is not available, as far as the features that lead to it tell.
std::string StepRunner::hintAbout(const std::string& feature) const
{
    if (feature.starts_with("CogAdapter"))
        return "\nThe adapter lists this feature, and never makes it available";
    if (feature == "InitializeCameraConnector")
        return "\nThe cameras of this board are connected already";
    if (const auto port = tryToRead("PortIndex"))
        return tryToRead("CameraName")
                   ? ""
                   : "\nNo camera is connected at port " + *port + ", which PortIndex selects";
    if (m_options.hasCamera)
        return "\nNo camera is connected";
    return "\nWhat belongs to a camera needs it connected: --camera does that";
}

std::optional<std::string> StepRunner::tryToRead(const std::string& feature) const
{
    try {
        return m_channel.read(feature);
    } catch (const aik::Error&) {
        return std::nullopt;
    }
}

}   // namespace orvo::aikctl
