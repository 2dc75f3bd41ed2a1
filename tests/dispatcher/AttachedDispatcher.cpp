#include "tests/dispatcher/AttachedDispatcher.h"

#include <filesystem>

#include "os/Program.h"

namespace orvo::sim {

namespace {

template <typename Function>
void find(os::Module library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(os::findSymbol(library, name));
    ASSERT_NE(function, nullptr) << name;
}

}   // namespace

std::string AttachedDispatcher::folderOfThisProgram()
{
    const auto* const here = reinterpret_cast<const void*>(&AttachedDispatcher::gone);
    return std::filesystem::path(os::modulePath(here)).parent_path().string();
}

void AttachedDispatcher::SetUp()
{
    os::setEnvironmentVariable("ORVO_SIM_LOG_LEVEL", "info,wordy=trace,silent=off");
    os::Error error;
    os::Module library = os::loadLibrary(folderOfThisProgram() + os::kSeparator +
                                             "common-logging-dispatcher" + os::kLibraryEnding,
                                         os::Neighbours::AsTheSystemDoes, &error);
    ASSERT_NE(library, nullptr) << error.text;
    find(library, "logging_dispatcher_descriptor", m_descriptor);
    find(library, "OrvoSimLog_setLevel", m_setLevel);
    find(library, "OrvoSimLog_countAttached", m_countAttached);

    s_levelChanges = &m_levelChanges;
    s_insideLevelChange = nullptr;
    attach();
}

void AttachedDispatcher::TearDown()
{
    if (m_countAttached && m_countAttached() > 0)
        detach();
}

void AttachedDispatcher::attach()
{
    m_descriptor->attach(this, &gone, &levelChanged, &m_query, &m_write);
}

void AttachedDispatcher::detach()
{
    m_descriptor->detach(this, m_descriptor);
}

std::pair<int64_t, int32_t> AttachedDispatcher::query(const std::string& logger) const
{
    int64_t id = 0;
    int32_t level = 0;
    m_query(logger.c_str(), &id, &level);
    return {id, level};
}

void AttachedDispatcher::write(int64_t id, int32_t level, const char* text) const
{
    m_write(id, level, text, 0, 0);
}

void AttachedDispatcher::levelChanged(int64_t id, int32_t level)
{
    if (const auto inside = s_insideLevelChange.load())
        inside();
    s_levelChanges->emplace_back(id, level);
}

}   // namespace orvo::sim
