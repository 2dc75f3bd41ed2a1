#include "sim/simulator/Ledger.h"

#include <nlohmann/json.hpp>

namespace orvo::sim {

DmaAccount& Ledger::account(uint32_t boardIndex, uint32_t dma)
{
    const std::lock_guard lock(m_mutex);
    auto& page = m_pages[{boardIndex, dma}];
    if (!page)
        page = std::make_unique<Page>(*this);
    return *page;
}

bool Ledger::read(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger& ledger) const
{
    const std::lock_guard lock(m_mutex);
    const auto page = m_pages.find({boardIndex, dma});
    if (page == m_pages.end() || page->second->numbers().runs == 0)
        return false;
    ledger = page->second->numbers();
    return true;
}

std::string Ledger::json() const
{
    const std::lock_guard lock(m_mutex);
    nlohmann::ordered_json dmas = nlohmann::ordered_json::array();
    for (const auto& [key, page] : m_pages) {
        const OrvoSim_Ledger numbers = page->numbers();
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
    std::unique_lock lock(m_mutex);
    return m_entered.wait_for(lock, timeout, [&] {
        const auto page = m_pages.find({boardIndex, dma});
        return page != m_pages.end() && page->second->numbers().delivered >= count;
    });
}

void Ledger::clear()
{
    const std::lock_guard lock(m_mutex);
    for (const auto& [key, page] : m_pages)
        page->clear();
}

void Ledger::Page::beginRun(double askedRate)
{
    const std::lock_guard lock(m_ledger.m_mutex);
    ++m_numbers.runs;
    m_numbers.askedRate = askedRate;
    m_producedInRun = 0;
}

void Ledger::Page::enter(Fate fate)
{
    const std::lock_guard lock(m_ledger.m_mutex);
    ++m_numbers.produced;
    ++(fate == Fate::Delivered ? m_numbers.delivered
       : fate == Fate::NoBlock ? m_numbers.droppedNoBlock
                               : m_numbers.droppedByFault);
    m_latest = Clock::now();
    if (m_producedInRun++ == 0)
        m_first = m_latest;
    m_ledger.m_entered.notify_all();
}

OrvoSim_Ledger Ledger::Page::numbers() const
{
    OrvoSim_Ledger numbers = m_numbers;
    const std::chrono::duration<double> seconds = m_latest - m_first;
    if (m_producedInRun > 1 && seconds.count() > 0)
        numbers.heldRate = static_cast<double>(m_producedInRun - 1) / seconds.count();
    return numbers;
}

void Ledger::Page::clear()
{
    m_numbers = {};
    m_producedInRun = 0;
}

}   // namespace orvo::sim
