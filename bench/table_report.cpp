#include "bench/table_report.h"

#include <algorithm>
#include <cstdio>

namespace bench {

const Path& TableReport::path_of(const std::string& name) const {
    return *std::ranges::find(paths_, name, &Path::name);
}

void TableReport::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        const std::string& name = run.run_name.function_name;
        const size_t slash = name.find('/');
        const Path& path = path_of(name.substr(0, slash));
        const auto way = std::ranges::find(kWayNames, name.substr(slash + 1)) - kWayNames;
        double& least = times_[path.name][std::stoi(run.run_name.args)][static_cast<size_t>(way)];
        const double time =
            path.waits ? run.GetAdjustedRealTime() / 1e3 : run.counters.at(kCpu).value * 1e6;
        least = least == 0 ? time : std::min(least, time);
    }
}

void TableReport::print() const {
    std::printf("%-16s %5s %-23s %11s %11s %7s %11s %9s\n", "path", "size", "of", "library",
                "limit", "ratio", "shell", "shell is");
    for (const Path& path : paths_) {
        if (!times_.contains(path.name)) continue;
        for (const auto& [size, row] : times_.at(path.name)) {
            const double ratio = row[kLibrary] / row[kLimit];
            std::printf("%-16s %5d %-23s %8.1f us %8.1f us %7.2f", path.name.c_str(), size,
                        path.unit.c_str(), row[kLibrary], row[kLimit], ratio);
            if (row[kShell] != 0)
                std::printf(" %8.0f us %7.1f x", row[kShell], row[kShell] / row[kLibrary]);
            std::printf("\n");
        }
    }
}

bool TableReport::store(const std::string& file) const {
    FILE* const out = std::fopen(file.c_str(), "w");
    if (out == nullptr) return false;
    const char* comma = "";
    std::fprintf(out, "[");
    for (const Path& path : paths_) {
        if (!times_.contains(path.name)) continue;
        for (const auto& [size, row] : times_.at(path.name)) {
            std::fprintf(out, "%s\n  {\"path\": \"%s\", \"size\": %d, \"unit\": \"%s\"", comma,
                         path.name.c_str(), size, path.unit.c_str());
            for (int way = kLibrary; way < kWays; ++way)
                if (row[static_cast<size_t>(way)] != 0)
                    std::fprintf(out, ", \"%s_us\": %.2f", kWayNames[way],
                                 row[static_cast<size_t>(way)]);
            std::fprintf(out, ", \"library_per_limit\": %.3f", row[kLibrary] / row[kLimit]);
            if (row[kShell] != 0)
                std::fprintf(out, ", \"shell_per_library\": %.1f", row[kShell] / row[kLibrary]);
            std::fprintf(out, "}");
            comma = ",";
        }
    }
    std::fprintf(out, "\n]\n");
    return std::fclose(out) == 0;
}

}  // namespace bench
