#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <spdlog/logger.h>

#include "os/ThreadSafety.h"
#include "sim/dispatcher/LevelRules.h"
#include "sim/orvo_sim_dispatcher.h"

namespace orvo::sim {

/// Records kept in memory in the order of arrival, to be read back. Threads: any.
class RecordCapture {
public:
    void set(bool on);
    void add(int64_t id, int32_t level, const std::string& logger, const std::string& text, uint32_t word,
             uint64_t longWord);
    /// False after the last. The texts live until clear().
    bool read(uint64_t index, OrvoSimLog_Record& record);
    void clear();

private:
    struct Record {
        int64_t id;
        int32_t level;
        std::string logger;
        std::string text;
        uint32_t word;
        uint64_t longWord;
    };

    os::Mutex m_mutex;
    bool m_on ORVO_GUARDED_BY(m_mutex) = false;
    std::deque<Record>
        m_records ORVO_GUARDED_BY(m_mutex);   // a deque: texts stay where they are while others are added
};

/// The simulated logging dispatcher: gives each logger name an id and a level, writes records to a rotating
/// file and, if asked, to standard error, and tells its clients of changes. Levels at this edge are spdlog's
/// plus 1: 1 is trace, 7 is off.
/// Threads: any. No lock is held while a client is called back; detach() waits until such calls have ended,
///          so a callback must not detach its own client.
/// Lifetime: one for each process, made at the first use and never destroyed: records may arrive to the very
///          end.
class Dispatcher {
public:
    using GoneFunction = void (*)();
    using LevelChangedFunction = void (*)(int64_t id, int32_t level);

    static Dispatcher& instance();

    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    /// `client` is whatever address tells the clients apart; a second attach of one replaces the first.
    void attach(void* client, GoneFunction gone, LevelChangedFunction levelChanged);
    /// After this the client is called no more. A client that isn't attached is ignored.
    void detach(void* client);
    size_t countAttached();

    /// The logger's id, from 1 and the same until the process ends, and its level now.
    void query(const std::string& name, int64_t& id, int32_t& level);
    /// A record of an unknown logger is dropped.
    void write(int64_t id, int32_t level, const std::string& text, uint32_t word, uint64_t longWord);

    void setLevel(const std::string& name, int32_t level);
    void goAway();

    RecordCapture& capture() { return m_capture; }

private:
    struct Client {
        GoneFunction gone;
        LevelChangedFunction levelChanged;
    };
    using Clients = std::map<void*, Client>;

    Dispatcher();
    ~Dispatcher() = default;

    void openSinks();
    int64_t idOf(const std::string& name) ORVO_REQUIRES(m_mutex);
    void endCalls();

    const LevelRules m_rules;
    std::vector<spdlog::sink_ptr> m_sinks;
    RecordCapture m_capture;

    os::Mutex m_mutex;
    std::condition_variable m_callsEnded;
    int m_callsUnderWay ORVO_GUARDED_BY(m_mutex) = 0;
    Clients m_clients ORVO_GUARDED_BY(m_mutex);
    std::map<std::string, int64_t> m_ids ORVO_GUARDED_BY(m_mutex);
    std::vector<std::shared_ptr<spdlog::logger>> m_loggers ORVO_GUARDED_BY(m_mutex);   // at id - 1
};

}   // namespace orvo::sim
