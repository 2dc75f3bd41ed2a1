#pragma once

#include <cstdint>

/// What the benches ask of their board library beside its own interface: look the functions up in `brdlib5`.
namespace orvo::bench {

inline constexpr uint32_t kMostDmas = 128;

/// "BenchBoard_setDmaCount": how many DMA channels the one applet process has from the next opening on, 1 to
/// kMostDmas. Not while a board is open.
using SetDmaCountFunction = void (*)(uint32_t count);

/// "BenchBoard_deliver": delivers one picture on the calling thread. It writes `word` to the start of the next
/// block of the ring and calls back. Answers 1, or 0 while that block is not free or the DMA does not run. One
/// thread at a time per DMA, and none while that DMA stops.
using DeliverFunction = int32_t (*)(uint32_t dma, uint64_t word);

}   // namespace orvo::bench
