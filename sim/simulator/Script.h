#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "os/ThreadSafety.h"
#include "sim/seam/Core.h"
#include "sim/simulator/Journal.h"

namespace orvo::sim {

/// What chosen calls do. Threads: any; no lock is held while a call waits.
class Script {
public:
    enum class Origin { ControlInterface, BoardsFile };

    /// What a rule does to the calls that match it.
    struct Order {
        enum class Kind { Answer, Slow, HoldAtEntry, HoldAtExit };

        Kind kind = Kind::Answer;
        int64_t result = 0;      // of Kind::Answer
        bool handsOut = false;   // of Kind::Answer: `bytes`, which may be none
        std::vector<std::byte> bytes;
        std::chrono::milliseconds delay{0};   // of Kind::Slow
    };

    /// Why no call can ever match; empty if one can.
    static std::string problemWith(std::string_view call);

    /// `nth` counts the matching calls from now on; 0 is every one.
    void add(std::string_view call, uint32_t nth, Order order, Origin origin);
    /// Ends the holding rules of that text, or all rules of an origin; calls held by them continue.
    void letGo(std::string_view call);
    void clear(Origin origin);
    bool waitUntilHeld(std::string_view call, std::chrono::milliseconds timeout);

    /// Whether there is any rule.
    bool isEmpty() const { return m_empty.load(std::memory_order_relaxed); }
    /// A call begins: waits as the rules say, and enters their answer into `pass`.
    void enter(std::string_view function, std::string_view arguments, CallPass& pass);
    /// It ends: waits if a rule holds it here.
    void leave(const CallPass& pass);

private:
    struct Rule {
        CallPattern pattern;
        uint32_t nth;
        Order order;
        Origin origin;
        uint64_t seen = 0;
        uint32_t held = 0;
        bool ended = false;
    };

    template <typename Predicate>
    void endRules(Predicate which);
    void hold(Rule& rule, os::MutexLock& lock) ORVO_REQUIRES(m_mutex);

    os::Mutex m_mutex;
    std::condition_variable m_changed;
    // Never freed: a call that is held, or bytes that were handed out, may outlast the rule.
    std::vector<Rule*> m_all ORVO_GUARDED_BY(m_mutex);
    std::vector<Rule*> m_rules ORVO_GUARDED_BY(m_mutex);   // those in force
    std::atomic<bool> m_empty{true};
};

}   // namespace orvo::sim
