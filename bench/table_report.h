// Prints what the benchmarks amount to, as one table of ratios, and stores it.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "bench/path.h"

namespace bench {

inline constexpr const char* kCpu = "cpu";  // counter: seconds for each time, children included

enum Way { kLibrary, kLimit, kShell, kWays };
inline constexpr const char* kWayNames[kWays] = {"library", "limit", "shell"};

// Takes benchmarks named PATH/WAY/SIZE.
class TableReport : public benchmark::BenchmarkReporter {
public:
    explicit TableReport(const std::vector<Path>& paths) : paths_(paths) {}

    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void print() const;
    bool store(const std::string& file) const;

private:
    // Microseconds of each way, the least of the repetitions; 0 for a way that there is not. Of
    // CPU time, but where pauses are the work.
    using Times = std::array<double, kWays>;

    const Path& path_of(const std::string& name) const;

    const std::vector<Path>& paths_;
    std::map<std::string, std::map<int, Times>> times_;
};

}  // namespace bench
