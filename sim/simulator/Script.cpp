#include "sim/simulator/Script.h"

#include <algorithm>
#include <iterator>
#include <thread>
#include <utility>

#include "sim/json/Json.h"

namespace orvo::sim {

using Kind = Script::Order::Kind;

namespace {

constexpr std::string_view kFunctions[] = {
#include <ScriptedFunctions.inc>   // made by CMake from the .def files
};

}   // namespace

std::string Script::problemWith(std::string_view call)
{
    const CallPattern pattern(call);
    const std::vector<std::string_view> known(std::begin(kFunctions), std::end(kFunctions));
    if (std::find(known.begin(), known.end(), pattern.function()) != known.end())
        return {};
    return "no library exports \"" + pattern.function() + "\"; " + knownNames(pattern.function(), known);
}

void Script::add(std::string_view call, uint32_t nth, Order order, Origin origin)
{
    const os::MutexLock lock(m_mutex);
    m_all.push_back(new Rule{CallPattern(call), nth, std::move(order), origin});
    m_rules.push_back(m_all.back());
    m_empty.store(false, std::memory_order_relaxed);
}

void Script::letGo(std::string_view call)
{
    endRules([&](const Rule& rule) {
        const bool holds = rule.order.kind == Kind::HoldAtEntry || rule.order.kind == Kind::HoldAtExit;
        return holds && rule.pattern.text() == call;
    });
}

void Script::clear(Origin origin)
{
    endRules([&](const Rule& rule) { return rule.origin == origin; });
}

template <typename Predicate>
void Script::endRules(Predicate which)
{
    const os::MutexLock lock(m_mutex);
    std::erase_if(m_rules, [&](Rule* rule) { return which(*rule) && (rule->ended = true); });
    m_empty.store(m_rules.empty(), std::memory_order_relaxed);
    m_changed.notify_all();
}

bool Script::waitUntilHeld(std::string_view call, std::chrono::milliseconds timeout)
{
    os::MutexLock lock(m_mutex);
    return m_changed.wait_for(lock.native(), timeout, [&]() ORVO_REQUIRES(m_mutex) {
        return std::any_of(m_rules.begin(), m_rules.end(),
                           [&](const Rule* rule) { return rule->held > 0 && rule->pattern.text() == call; });
    });
}

void Script::enter(std::string_view function, std::string_view arguments, CallPass& pass)
{
    os::MutexLock lock(m_mutex);
    std::chrono::milliseconds delay{0};
    std::vector<Rule*> holds;
    for (Rule* rule : m_rules) {
        if (!rule->pattern.matches(function, arguments))
            continue;
        ++rule->seen;
        if (rule->nth != 0 && rule->seen != rule->nth)
            continue;
        const Order& order = rule->order;
        if (order.kind == Kind::HoldAtEntry)
            holds.push_back(rule);
        else if (order.kind == Kind::HoldAtExit)
            pass.exitRule = rule;
        else if (order.kind == Kind::Slow)
            delay += order.delay;
        else if (!std::exchange(pass.answered, true)) {
            pass.result = order.result;
            pass.bytes = order.handsOut ? order.bytes.data() : nullptr;
            pass.size = order.bytes.size();
        }
    }
    for (Rule* rule : holds)
        hold(*rule, lock);
    lock.unlock();
    if (delay.count() > 0)
        std::this_thread::sleep_for(delay);
}

void Script::leave(const CallPass& pass)
{
    if (!pass.exitRule)
        return;
    os::MutexLock lock(m_mutex);
    hold(*static_cast<Rule*>(pass.exitRule), lock);
}

void Script::hold(Rule& rule, os::MutexLock& lock)
{
    ++rule.held;
    m_changed.notify_all();
    while (!rule.ended)
        m_changed.wait(lock.native());
    --rule.held;
}

}   // namespace orvo::sim
