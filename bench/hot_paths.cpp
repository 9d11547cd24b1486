// Every hot path of the library beside its limit and beside a shell's way.
// usage: hot_paths [--short] [--json=FILE] [--benchmark_...]
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "bench/path.h"
#include "bench/system.h"
#include "bench/table_report.h"

namespace bench {

void keep(const void* result) {
    benchmark::DoNotOptimize(result);
    benchmark::ClobberMemory();
}

namespace {

struct Options {
    bool brief = false;
    std::string json;
};

// Takes out what is ours and leaves the rest to the benchmark library.
Options take_options(int& count, char** arguments) {
    Options options;
    int left = 1;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--short") == 0)
            options.brief = true;
        else if (std::strncmp(arguments[i], "--json=", 7) == 0)
            options.json = arguments[i] + 7;
        else
            arguments[left++] = arguments[i];
    }
    count = left;
    return options;
}

std::function<void()> work(const Path& path, Way way) {
    switch (way) {
        case kLibrary:
            return path.library;
        case kLimit:
            return path.limit;
        default:
            if (!path.shell) return {};
            return [shell = path.shell] { run_shell(shell()); };
    }
}

// The commands' share included.
double cpu_seconds() {
    double seconds = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage used = {};
        getrusage(who, &used);
        for (const timeval& time : {used.ru_utime, used.ru_stime})
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    }
    return seconds;
}

// Short repetitions in mixed order: the least of them is the one that nobody disturbed.
void add(const Path& path, Way way, bool brief) {
    const auto once = work(path, way);
    if (!once) return;
    const auto run = [&path, once](benchmark::State& state) {
        path.prepare(static_cast<int>(state.range(0)));
        const double before = cpu_seconds();
        for (auto _ : state) once();
        state.counters[kCpu] = (cpu_seconds() - before) / static_cast<double>(state.iterations());
    };
    auto* const row = benchmark::RegisterBenchmark((path.name + '/' + kWayNames[way]).c_str(), run);
    for (const int size : path.sizes) row->Arg(size);
    row->UseRealTime();
    if (path.waits)
        row->Iterations(1)->Repetitions(brief ? 1 : 5);
    else
        row->MinTime(brief ? 0.005 : 0.02)->Repetitions(brief ? 3 : 25);
}

bool measure(const std::vector<Path>& paths, const Options& options) {
    for (const Path& path : paths)
        for (const Way way : {kLibrary, kLimit, kShell}) add(path, way, options.brief);
    TableReport report(paths);
    if (std::freopen("/dev/null", "w", stderr) == nullptr) return false;  // the library's messages
    benchmark::RunSpecifiedBenchmarks(&report);
    report.print();
    return options.json.empty() || report.store(options.json);
}

}  // namespace
}  // namespace bench

int main(int count, char** arguments) {
    const bench::Options options = bench::take_options(count, arguments);
    std::vector<char*> all(arguments, arguments + count);
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    all.insert(all.begin() + 1, mixed.data());
    int all_count = count + 1;
    benchmark::Initialize(&all_count, all.data());

    std::vector<bench::Path> paths;
    bench::add_profile_paths(paths);
    bench::add_text_paths(paths);
    bench::add_switch_paths(paths);
    bench::add_load_path(paths);
    bench::make_tree();
    const bool stored = bench::measure(paths, options);
    bench::remove_tree();
    return stored ? 0 : 1;
}
