#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "bench/harness/Harness.h"

int main(int count, char** arguments)
{
    using namespace orvo::bench;
    bool smoke = false;
    std::string json;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--smoke") {
            smoke = true;
        } else if (argument == "--json" && i + 1 < count) {
            json = arguments[++i];
        } else {
            std::fprintf(stderr, "usage: %s [--smoke] [--json <file>]\n", arguments[0]);
            return 2;
        }
    }
    try {
        Report report(smoke);
        bench(report);
        if (!json.empty())
            report.write(json);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], failure.what());
        return 1;
    }
}
