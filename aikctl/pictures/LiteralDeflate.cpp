#include "aikctl/pictures/LiteralDeflate.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <zlib.h>

#include "aikctl/pictures/BigEndian.h"

namespace orvo::aikctl {

namespace {

constexpr size_t kEndOfBlock = 256;
constexpr size_t kSymbols = 257;   // the 256 bytes, and the end of a block

// Four codes, and the bits that wait for a byte to be full, fit 64 bits.
constexpr unsigned kLongestCode = 14;

using Counts = std::array<uint32_t, kSymbols>;
using Lengths = std::array<uint8_t, kSymbols>;

struct Code {
    uint16_t bits = 0;   // the first one lowest
    uint16_t length = 0;
};
using Codes = std::array<Code, kSymbols>;

// Neighbours are often equal, and a count that was just written can't be read again at once: four tables.
Counts count(std::span<const uint8_t> bytes)
{
    std::array<std::array<uint32_t, 256>, 4> tables{};
    size_t at = 0;
    for (; at + 4 <= bytes.size(); at += 4)
        for (size_t table = 0; table < 4; ++table)
            ++tables[table][bytes[at + table]];
    for (; at < bytes.size(); ++at)
        ++tables[0][bytes[at]];
    Counts counts{};
    for (size_t symbol = 0; symbol < 256; ++symbol)
        counts[symbol] = tables[0][symbol] + tables[1][symbol] + tables[2][symbol] + tables[3][symbol];
    counts[kEndOfBlock] = 1;
    return counts;
}

// Huffman's code, without a limit. Returns the length of the longest code.
unsigned measureCodes(const Counts& counts, Lengths& lengths)
{
    struct Node {
        uint32_t count;
        uint16_t symbol;   // of a leaf
        uint16_t parent;
        uint8_t depth;
    };
    std::array<Node, 2 * kSymbols> nodes{};   // leaves by rising count, then their parents, likewise
    size_t end = 0;
    for (uint16_t symbol = 0; symbol < kSymbols; ++symbol)
        if (counts[symbol] > 0)
            nodes[end++] = {counts[symbol], symbol, 0, 0};
    const size_t leaves = end;
    std::sort(nodes.begin(), nodes.begin() + static_cast<ptrdiff_t>(leaves),
              [](const Node& one, const Node& other) { return one.count < other.count; });

    size_t leaf = 0;
    size_t inner = leaves;
    const auto takeRarest = [&]() -> Node& {
        const bool isLeaf = leaf < leaves && (inner == end || nodes[leaf].count <= nodes[inner].count);
        return nodes[isLeaf ? leaf++ : inner++];
    };
    for (; end < 2 * leaves - 1; ++end) {
        Node& one = takeRarest();
        Node& other = takeRarest();
        one.parent = other.parent = static_cast<uint16_t>(end);
        nodes[end].count = one.count + other.count;
    }
    lengths = {};
    unsigned longest = 0;
    for (size_t node = end - 1; node-- > 0;) {
        nodes[node].depth = static_cast<uint8_t>(nodes[nodes[node].parent].depth + 1);
        if (node < leaves) {
            lengths[nodes[node].symbol] = nodes[node].depth;
            longest = std::max<unsigned>(longest, nodes[node].depth);
        }
    }
    return longest;
}

// Rare symbols are made less rare until the longest code fits.
Lengths chooseLengths(Counts counts)
{
    Lengths lengths{};
    while (measureCodes(counts, lengths) > kLongestCode)
        for (uint32_t& number : counts)
            number = (number + 1) / 2;
    return lengths;
}

uint16_t reversed(uint32_t bits, unsigned count)
{
    uint32_t result = 0;
    for (unsigned bit = 0; bit < count; ++bit)
        result |= (bits >> bit & 1) << (count - 1 - bit);
    return static_cast<uint16_t>(result);
}

// The codes follow from their lengths: shorter ones first, then by symbol.
Codes codesOf(const Lengths& lengths)
{
    Codes codes{};
    uint32_t next = 0;
    for (unsigned length = 1; length <= kLongestCode; ++length, next <<= 1)
        for (size_t symbol = 0; symbol < kSymbols; ++symbol)
            if (lengths[symbol] == length)
                codes[symbol] = {reversed(next++, length), static_cast<uint16_t>(length)};
    return codes;
}

/// Writes bits, the first one lowest. A whole word is stored each time; what of it is not full bytes is stored
/// again by the next one.
struct BitWriter {
    uint8_t* next;
    uint64_t bits;
    unsigned count;   // of the bits that wait

    void put(uint64_t more, unsigned length)
    {
        bits |= more << count;
        count += length;
    }
    void put(const Code& code) { put(code.bits, code.length); }
    void storeWholeBytes()
    {
        static_assert(std::endian::native == std::endian::little);
        std::memcpy(next, &bits, sizeof(bits));
        next += count / 8;
        bits >>= count & ~7U;
        count &= 7;
    }
};

// The head of a block with codes of its own. Their lengths have codes, too: simply the length in four bits.
void putHead(BitWriter& writer, const Lengths& lengths, bool isLast)
{
    writer.put(isLast ? 1 : 0, 1);
    writer.put(2, 2);   // codes of its own
    writer.put(0, 5);   // 257 for literals and the end,
    writer.put(1, 5);   // 2 for distances: none occurs, but readers want a complete code
    writer.put(15, 4);
    writer.put(0, 9);   // the codes for repeated lengths: not used
    writer.storeWholeBytes();
    for (unsigned length = 0; length < 16; ++length)
        writer.put(4, 3);
    writer.storeWholeBytes();
    for (const uint8_t length : lengths) {
        writer.put(reversed(length, 4), 4);
        writer.storeWholeBytes();
    }
    for (unsigned distance = 0; distance < 2; ++distance)
        writer.put(reversed(1, 4), 4);
    writer.storeWholeBytes();
}
constexpr size_t kHeadBytes = 146;   // rounded up

}   // namespace

LiteralDeflate::LiteralDeflate(std::vector<uint8_t>& out) : m_out(out)
{
    appendBigEndian<uint16_t>(out, 0x7801);   // deflate with a window of 32 KiB, fast
}

void LiteralDeflate::add(std::span<const uint8_t> bytes, bool isLast)
{
    m_checksum = static_cast<uint32_t>(adler32_z(m_checksum, bytes.data(), bytes.size()));
    const Counts counts = count(bytes);
    const Lengths lengths = chooseLengths(counts);
    const Codes codes = codesOf(lengths);
    uint64_t bits = 0;
    for (size_t symbol = 0; symbol < kSymbols; ++symbol)
        bits += uint64_t{counts[symbol]} * lengths[symbol];
    const size_t begin = m_out.size();
    m_out.resize(begin + kHeadBytes + bits / 8 + sizeof(uint64_t));

    BitWriter writer{m_out.data() + begin, m_bits, m_bitCount};
    putHead(writer, lengths, isLast);
    size_t at = 0;
    for (; at + 4 <= bytes.size(); at += 4) {
        for (size_t ahead = 0; ahead < 4; ++ahead)
            writer.put(codes[bytes[at + ahead]]);
        writer.storeWholeBytes();
    }
    for (; at < bytes.size(); ++at)
        writer.put(codes[bytes[at]]);
    writer.storeWholeBytes();
    writer.put(codes[kEndOfBlock]);
    if (isLast)
        writer.count = (writer.count + 7) & ~7U;
    writer.storeWholeBytes();

    m_out.resize(static_cast<size_t>(writer.next - m_out.data()));
    m_bits = writer.bits;
    m_bitCount = writer.count;
    if (isLast)
        appendBigEndian(m_out, m_checksum);
}

}   // namespace orvo::aikctl
