#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvo::aikctl {

/// How many bytes a call wrote into a buffer, which it doesn't tell: mark the buffer, make the call, and look
/// how far the marks are gone. The marks are no pattern that a picture has by chance; a byte at the very end
/// that happens to equal its mark makes the answer too small by one, and so on.
void markBuffer(std::span<uint8_t> buffer);
size_t writtenExtent(std::span<const uint8_t> buffer);

}   // namespace orvo::aikctl
