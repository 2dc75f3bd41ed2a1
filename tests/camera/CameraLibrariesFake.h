#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvo::test {

using Lines = std::vector<std::string>;

/// Stands at link time where both camera libraries are. Journals each call: its name without the family, and
/// what it was given. One at a time.
class CameraLibrariesFake {
public:
    CameraLibrariesFake();
    CameraLibrariesFake(const CameraLibrariesFake&) = delete;
    CameraLibrariesFake& operator=(const CameraLibrariesFake&) = delete;
    ~CameraLibrariesFake();

    /// What a call answers that isn't 0: by its whole line in the journal, or by its name alone.
    std::map<std::string, int32_t> answers;
    const char* description = "out of order";
    int64_t integer = 0;
    int32_t boolean = 0;
    double floatingPoint = 0;
    const char* text = "";
    bool textIntoBuffer = false;    // the caller's, if it gives one
    const void* record = nullptr;   // of any camera

    Lines journal;
    Lines takeJournal() { return std::exchange(journal, {}); }

    /// Journals the call and answers what the test has said.
    int32_t called(const std::string& name, const std::string& arguments);
    uint64_t newCamera() { return ++m_lastCamera; }   // from 101 on

private:
    uint64_t m_lastCamera = 100;
};

}   // namespace orvo::test
