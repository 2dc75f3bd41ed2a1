#include "tests/system/Transcript.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/support/Places.h"

namespace orvo::test {

void Transcript::add(const std::string& step, const Lines& lines)
{
    m_text += step + "\n";
    for (const std::string& line : lines)
        m_text += "    " + line + "\n";
}

testing::AssertionResult Transcript::isThatOf(const std::string& name) const
{
    const std::string path = pathInBuild("tests/system/transcripts/" + name);
    std::ifstream file(path + ".txt", std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (m_text == expected)
        return testing::AssertionSuccess();
    std::ofstream(path + ".seen", std::ios::binary) << m_text;
    const auto place = std::mismatch(m_text.begin(), m_text.end(), expected.begin(), expected.end()).first;
    return testing::AssertionFailure()
           << name << ".txt differs from line " << std::count(m_text.begin(), place, '\n') + 1
           << " on. Seen was " << path << ".seen";
}

}   // namespace orvo::test
