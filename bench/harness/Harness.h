#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orvo::bench {

/// What one round of a contender measured.
class Samples {
public:
    void reserve(size_t count) { m_nanoseconds.reserve(count); }
    /// The time of one operation, or the mean of `operations` that were timed together.
    void add(double nanoseconds, uint64_t operations = 1);
    /// Runs `work` so many times and adds their mean: for work that is too short to be timed alone.
    template <typename Work>
    void addMean(uint64_t operations, Work&& work);

    const std::vector<double>& nanoseconds() const { return m_nanoseconds; }
    uint64_t operations() const { return m_operations; }

private:
    std::vector<double> m_nanoseconds;
    uint64_t m_operations = 0;
};

/// One way to do a job. `round` does a part of it that takes milliseconds, and may throw.
struct Contender {
    std::string name;
    std::function<void(Samples&)> round;
};

/// A line of the table. Times are nanoseconds an operation; 0 where there were too few samples to tell.
struct Row {
    std::string job;
    std::string contender;
    double median = 0;
    double percentile99 = 0;
    double percentile999 = 0;
    double cpu = 0;           // of all threads, an operation
    double allocations = 0;   // of all threads, an operation
    double ratio = 1;   // to the first contender of the job, within the same round; the median of all rounds
};

/// Collects the rows of one program.
class Report {
public:
    /// Prints the head of the table.
    explicit Report(bool smoke);

    /// Whether the program is to show only that it runs, in a fraction of a second.
    bool isSmoke() const { return m_smoke; }
    /// `count`, or for a smoke run a small part of it.
    uint64_t scaled(uint64_t count) const;

    /// Runs the contenders in turn, round by round, so that what else the machine does meets all of them, and
    /// prints a row for each. The first one is what the others are compared with. A further round of each,
    /// which is not timed, counts allocations.
    void compare(const std::string& job, const std::vector<Contender>& contenders, uint64_t rounds = 15);

    /// Writes all rows as JSON. Throws std::runtime_error where it can't.
    void write(const std::string& path) const;

private:
    bool m_smoke;
    std::vector<Row> m_rows;
};

/// Nanoseconds of a clock that nobody sets.
uint64_t clockNanoseconds();

/// Prevents the compiler from dropping the work that made the memory behind `data`.
void keep(const void* data);

/// Each program defines this one. A failure is thrown.
void bench(Report& report);

template <typename Work>
void Samples::addMean(uint64_t operations, Work&& work)
{
    const uint64_t begin = clockNanoseconds();
    for (uint64_t i = 0; i < operations; ++i)
        work();
    add(static_cast<double>(clockNanoseconds() - begin) / static_cast<double>(operations), operations);
}

}   // namespace orvo::bench
