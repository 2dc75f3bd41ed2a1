#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "sim/orvo_sim.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// What became of every picture, a page for each board and DMA. Threads: any.
class Ledger {
public:
    /// The page, made if it isn't there yet. It stays for good.
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

    /// Its numbers are guarded by the ledger's mutex.
    class Page final : public DmaAccount {
    public:
        explicit Page(Ledger& ledger) : m_ledger(ledger) {}

        void beginRun(double askedRate) override;
        void enter(Fate fate) override;

        OrvoSim_Ledger numbers() const;
        void clear();

    private:
        Ledger& m_ledger;
        OrvoSim_Ledger m_numbers{};
        uint64_t m_producedInRun = 0;
        Clock::time_point m_first, m_latest;   // picture of the run
    };

    mutable std::mutex m_mutex;
    std::condition_variable m_entered;
    std::map<Key, std::unique_ptr<Page>> m_pages;
};

}   // namespace orvo::sim
