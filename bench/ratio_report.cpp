#include "bench/ratio_report.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

constexpr double kLimit = 1.0 / 3;  // of the plain parser's CPU time

}  // namespace

void RatioReport::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        const std::string& name = run.run_name.function_name;
        const size_t slash = name.find('/');
        Cost& cost =
            tables_[name.substr(0, slash)][std::stoi(run.run_name.args)][name.substr(slash + 1)];
        const double time = run.GetAdjustedCPUTime();
        cost.nanoseconds = cost.nanoseconds == 0 ? time : std::min(cost.nanoseconds, time);
        cost.allocations = std::max(cost.allocations, run.counters.at("allocations").value);
    }
}

bool RatioReport::print() const {
    bool kept = true;
    std::printf("%-9s %5s %12s %12s %7s %12s\n", "table", "rows", "library/row", "sscanf/row",
                "ratio", "allocations");
    for (const auto& [table, sizes] : tables_) {
        for (const auto& [rows, parsers] : sizes) {
            const Cost& library = parsers.at("library");
            const Cost& plain = parsers.at("plain");
            const double ratio = library.nanoseconds / plain.nanoseconds;
            std::printf("%-9s %5d %9.0f ns %9.0f ns %7.2f %12.0f\n", table.c_str(), rows,
                        library.nanoseconds / rows, plain.nanoseconds / rows, ratio,
                        library.allocations);
            kept = kept && ratio <= kLimit && library.allocations == 0;
        }
    }
    std::printf("limits: ratio %.2f, no allocations: %s\n", kLimit, kept ? "kept" : "NOT KEPT");
    return kept;
}

}  // namespace bench
