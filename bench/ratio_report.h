// Prints what the benchmarks amount to: one line for each table and size.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace bench {

// Takes benchmarks named TABLE/PARSER/ROWS with the parsers "library" and "plain".
class RatioReport : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    bool print() const;  // whether every table keeps to the limits

private:
    struct Cost {
        double nanoseconds = 0;  // of CPU time; the least of the repetitions
        double allocations = 0;
    };
    std::map<std::string, std::map<int, std::map<std::string, Cost>>> tables_;
};

}  // namespace bench
