#include "sim/simulator/Ledger.h"

#include <nlohmann/json.hpp>

namespace orvo::sim {

DmaAccount& Ledger::account(uint32_t boardIndex, uint32_t dma)
{
    const os::MutexLock lock(m_mutex);
    const Key key{boardIndex, dma};
    auto& account = m_accounts[key];
    if (!account)
        account = std::make_unique<Account>(*this, key);
    return *account;
}

bool Ledger::read(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger& ledger) const
{
    const os::MutexLock lock(m_mutex);
    const auto page = m_pages.find({boardIndex, dma});
    if (page == m_pages.end() || page->second.numbers.runs == 0)
        return false;
    ledger = page->second.withHeldRate();
    return true;
}

std::string Ledger::json() const
{
    const os::MutexLock lock(m_mutex);
    nlohmann::ordered_json dmas = nlohmann::ordered_json::array();
    for (const auto& [key, page] : m_pages) {
        const OrvoSim_Ledger numbers = page.withHeldRate();
        if (numbers.runs == 0)
            continue;
        dmas.push_back({{"board", key.first},
                        {"dma", key.second},
                        {"runs", numbers.runs},
                        {"produced", numbers.produced},
                        {"delivered", numbers.delivered},
                        {"droppedNoBlock", numbers.droppedNoBlock},
                        {"droppedByFault", numbers.droppedByFault},
                        {"askedRate", numbers.askedRate},
                        {"heldRate", numbers.heldRate}});
    }
    return nlohmann::ordered_json{{"dmas", dmas}}.dump(2) + "\n";
}

bool Ledger::waitForDelivered(uint32_t boardIndex, uint32_t dma, uint64_t count,
                              std::chrono::milliseconds timeout)
{
    os::MutexLock lock(m_mutex);
    return m_entered.wait_for(lock.native(), timeout, [&]() ORVO_REQUIRES(m_mutex) {
        const auto page = m_pages.find({boardIndex, dma});
        return page != m_pages.end() && page->second.numbers.delivered >= count;
    });
}

void Ledger::clear()
{
    const os::MutexLock lock(m_mutex);
    for (auto& [key, page] : m_pages) {
        page.numbers = {};
        page.producedInRun = 0;
    }
}

void Ledger::beginRun(Key key, double askedRate)
{
    const os::MutexLock lock(m_mutex);
    Page& page = m_pages[key];
    ++page.numbers.runs;
    page.numbers.askedRate = askedRate;
    page.producedInRun = 0;
}

void Ledger::enter(Key key, Fate fate)
{
    const os::MutexLock lock(m_mutex);
    Page& page = m_pages[key];
    ++page.numbers.produced;
    ++(fate == Fate::Delivered ? page.numbers.delivered
       : fate == Fate::NoBlock ? page.numbers.droppedNoBlock
                               : page.numbers.droppedByFault);
    page.latest = Clock::now();
    if (page.producedInRun++ == 0)
        page.first = page.latest;
    m_entered.notify_all();
}

OrvoSim_Ledger Ledger::Page::withHeldRate() const
{
    OrvoSim_Ledger all = numbers;
    const std::chrono::duration<double> seconds = latest - first;
    if (producedInRun > 1 && seconds.count() > 0)
        all.heldRate = static_cast<double>(producedInRun - 1) / seconds.count();
    return all;
}

}   // namespace orvo::sim
