#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "os/Os.h"
#include "sim/orvo_sim_dispatcher.h"

namespace orvo::sim {

/// The dispatcher library as its client finds it, loaded from beside the test, with the wheel in our hand
/// and one client attached.
class AttachedDispatcher : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void attach();
    void detach();

    /// Id and level, as the dispatcher answers the question for a logger.
    std::pair<int64_t, int32_t> query(const std::string& logger) const;
    int64_t idOf(const std::string& logger) const { return query(logger).first; }
    void write(int64_t id, int32_t level, const char* text) const;

    static std::string folderOfThisProgram();

    // What the client was told since it was made.
    static inline std::vector<std::pair<int64_t, int32_t>>* s_levelChanges = nullptr;
    static inline std::atomic<void (*)()> s_insideLevelChange{nullptr};

    OrvoSimLog_setLevel_t m_setLevel = nullptr;
    OrvoSimLog_countAttached_t m_countAttached = nullptr;

private:
    static void gone() {}
    static void levelChanged(int64_t id, int32_t level);

    using Query = void (*)(const char* name, int64_t* id, int32_t* level);
    using Write = void (*)(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord);
    struct Descriptor {
        void (*attach)(void* client, void (*gone)(), void (*levelChanged)(int64_t, int32_t), Query*, Write*);
        void (*detach)(void* client, void* descriptor);
    };

    Descriptor* m_descriptor = nullptr;
    std::vector<std::pair<int64_t, int32_t>> m_levelChanges;
    Query m_query = nullptr;
    Write m_write = nullptr;
};

}   // namespace orvo::sim
