#include "sim/dispatcher/Dispatcher.h"

#include <algorithm>
#include <cstdio>

#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include "os/InstallationDirectory.h"
#include "os/Os.h"

namespace orvo::sim {

namespace {

constexpr const char* kLevelVariable = "ORVO_SIM_LOG_LEVEL";
constexpr const char* kConsoleVariable = "ORVO_SIM_LOG_CONSOLE";   // anything but empty and 0 is yes
constexpr size_t kFileSize = 5 << 20;                              // bytes, then the next file begins
constexpr size_t kOlderFiles = 3;

void complain(const std::string& text)
{
    std::fprintf(stderr, "common-logging-dispatcher: %s\n", text.c_str());
}

bool consoleIsAskedFor()
{
    const std::string value = os::environmentVariable(kConsoleVariable);
    return !value.empty() && value != "0";
}

int32_t edgeLevel(spdlog::level::level_enum level)
{
    return level + 1;
}

spdlog::level::level_enum spdlogLevel(int32_t level, spdlog::level::level_enum highest)
{
    return static_cast<spdlog::level::level_enum>(
        std::clamp<int32_t>(level - 1, spdlog::level::trace, highest));
}

}   // namespace

Dispatcher& Dispatcher::instance()
{
    static auto* const dispatcher = new Dispatcher;   // leaked on purpose, see the class
    return *dispatcher;
}

Dispatcher::Dispatcher() : m_rules(os::environmentVariable(kLevelVariable))
{
    for (const std::string& level : m_rules.unknownLevels())
        complain(std::string(kLevelVariable) + ": \"" + level +
                 "\" is none of trace, debug, info, warning, error, critical, off");
    openSinks();
}

void Dispatcher::openSinks()
{
    if (consoleIsAskedFor())
        m_sinks.push_back(std::make_shared<spdlog::sinks::stderr_sink_mt>());

    const auto installation = os::installationServing(os::modulePath(reinterpret_cast<void*>(&complain)));
    if (!installation) {
        complain("no installation directory, so no log file");
        return;
    }
    const std::string file =
        *installation + os::kSeparator + "log" + os::kSeparator + "orvo-cognex-adapter.log";
    try {
        m_sinks.push_back(
            std::make_shared<spdlog::sinks::rotating_file_sink_mt>(file, kFileSize, kOlderFiles));
    } catch (const spdlog::spdlog_ex& failure) {
        complain(std::string("no log file: ") + failure.what());
    }
}

void Dispatcher::attach(void* client, GoneFunction gone, LevelChangedFunction levelChanged)
{
    const os::MutexLock lock(m_mutex);
    m_clients[client] = {gone, levelChanged};
}

void Dispatcher::detach(void* client)
{
    os::MutexLock lock(m_mutex);
    m_clients.erase(client);
    while (m_callsUnderWay > 0)
        m_callsEnded.wait(lock.native());
}

size_t Dispatcher::countAttached()
{
    const os::MutexLock lock(m_mutex);
    return m_clients.size();
}

void Dispatcher::query(const std::string& name, int64_t& id, int32_t& level)
{
    const os::MutexLock lock(m_mutex);
    id = idOf(name);
    level = edgeLevel(m_loggers[static_cast<size_t>(id - 1)]->level());
}

void Dispatcher::write(int64_t id, int32_t level, const std::string& text, uint32_t word, uint64_t longWord)
{
    std::shared_ptr<spdlog::logger> logger;
    {
        const os::MutexLock lock(m_mutex);
        if (id < 1 || static_cast<uint64_t>(id) > m_loggers.size())
            return;
        logger = m_loggers[static_cast<size_t>(id - 1)];
    }
    m_capture.add(id, level, logger->name(), text, word, longWord);
    logger->log(spdlogLevel(level, spdlog::level::critical), spdlog::string_view_t(text));
}

void Dispatcher::setLevel(const std::string& name, int32_t level)
{
    const auto newLevel = spdlogLevel(level, spdlog::level::off);
    Clients clients;
    int64_t id = 0;
    {
        const os::MutexLock lock(m_mutex);
        id = idOf(name);
        m_loggers[static_cast<size_t>(id - 1)]->set_level(newLevel);
        ++m_callsUnderWay;
        clients = m_clients;
    }
    for (const auto& [address, client] : clients)
        client.levelChanged(id, edgeLevel(newLevel));
    endCalls();
}

void Dispatcher::goAway()
{
    Clients clients;
    {
        const os::MutexLock lock(m_mutex);
        ++m_callsUnderWay;
        clients.swap(m_clients);
    }
    for (const auto& [address, client] : clients)
        client.gone();
    endCalls();
}

int64_t Dispatcher::idOf(const std::string& name)
{
    const auto [entry, isNew] = m_ids.try_emplace(name, static_cast<int64_t>(m_loggers.size()) + 1);
    if (isNew) {
        auto logger = std::make_shared<spdlog::logger>(name, m_sinks.begin(), m_sinks.end());
        logger->set_level(m_rules.levelOf(name));
        logger->flush_on(spdlog::level::trace);   // a crash loses no record
        m_loggers.push_back(std::move(logger));
    }
    return entry->second;
}

void Dispatcher::endCalls()
{
    const os::MutexLock lock(m_mutex);
    --m_callsUnderWay;
    m_callsEnded.notify_all();
}

void RecordCapture::set(bool on)
{
    const os::MutexLock lock(m_mutex);
    m_on = on;
}

void RecordCapture::add(int64_t id, int32_t level, const std::string& logger, const std::string& text,
                        uint32_t word, uint64_t longWord)
{
    const os::MutexLock lock(m_mutex);
    if (m_on)
        m_records.push_back({id, level, logger, text, word, longWord});
}

bool RecordCapture::read(uint64_t index, OrvoSimLog_Record& record)
{
    const os::MutexLock lock(m_mutex);
    if (index >= m_records.size())
        return false;
    const Record& kept = m_records[index];
    record = {kept.id, kept.level, kept.word, kept.longWord, kept.logger.c_str(), kept.text.c_str()};
    return true;
}

void RecordCapture::clear()
{
    const os::MutexLock lock(m_mutex);
    m_records.clear();
}

}   // namespace orvo::sim
