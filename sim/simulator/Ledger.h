#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "os/ThreadSafety.h"
#include "sim/orvo_sim.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// What became of every picture, a page for each board and DMA. Threads: any.
class Ledger {
public:
    /// Of one DMA's page, made if it isn't there yet. It stays for good.
    DmaAccount& account(uint32_t boardIndex, uint32_t dma);

    /// False for a DMA that never ran.
    bool read(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger& ledger) const;
    std::string json() const;
    bool waitForDelivered(uint32_t boardIndex, uint32_t dma, uint64_t count,
                          std::chrono::milliseconds timeout);

    /// Begins all pages anew.
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    using Key = std::pair<uint32_t, uint32_t>;   // board, DMA

    /// The way of the board library to one page.
    class Account final : public DmaAccount {
    public:
        Account(Ledger& ledger, Key key) : m_ledger(ledger), m_key(std::move(key)) {}

        void beginRun(double askedRate) override { m_ledger.beginRun(m_key, askedRate); }
        void enter(Fate fate) override { m_ledger.enter(m_key, fate); }

    private:
        Ledger& m_ledger;
        const Key m_key;
    };

    struct Page {
        OrvoSim_Ledger numbers{};   // but for the held rate
        uint64_t producedInRun = 0;
        Clock::time_point first, latest;   // picture of the run

        OrvoSim_Ledger withHeldRate() const;
    };

    void beginRun(Key key, double askedRate);
    void enter(Key key, Fate fate);

    mutable os::Mutex m_mutex;
    std::condition_variable m_entered;
    std::map<Key, std::unique_ptr<Account>> m_accounts ORVO_GUARDED_BY(m_mutex);
    std::map<Key, Page> m_pages ORVO_GUARDED_BY(m_mutex);
};

}   // namespace orvo::sim
