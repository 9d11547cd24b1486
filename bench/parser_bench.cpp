// The library's table parsers beside plain ones, on the same text and into the same record.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bench/plain_parsers.h"
#include "bench/ratio_report.h"
#include "bench/sample_tables.h"
#include "src/support/stream.h"
#include "src/wireless/station_table.h"
#include "src/wireless/survey_table.h"

namespace {

size_t allocations = 0;

}  // namespace

// Counts every allocation of the program.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);

void* malloc(size_t size) {
    ++allocations;
    return __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    ++allocations;
    return __libc_calloc(count, size);
}
void* realloc(void* memory, size_t size) {
    ++allocations;
    return __libc_realloc(memory, size);
}
}

namespace {

// A text as the stream that a driver's answer is read from.
class TextStream {
public:
    explicit TextStream(std::string& text)
        : stream_(fmemopen(text.data(), text.size(), "r")), file_(stream_) {}
    platform::File& file() { return file_; }
    FILE* from_start() {
        std::rewind(stream_);
        return stream_;
    }

private:
    FILE* stream_;
    platform::File file_;
};

void list_stations(TextStream& stream, station_list& list, std::span<const wireless_conf> bss) {
    platform::StationTable table(list, bss, 0);
    char line[256];
    while (!table.full()) {
        const auto text = stream.file().read_line(line);
        if (!text) break;
        table.take_line(*text);
    }
}

void list_networks(std::string_view text, ap_list& list) {
    platform::SurveyLines lines(text, 512);
    while (list.count < AP_LIST_MAX) {
        const auto line = lines.next();
        if (!line) return;
        const platform::SurveyLine survey(*line);
        if (survey.empty() || survey.channel() == 0) continue;
        ap_entry& entry = list.entries[list.count++];
        entry.channel.channel = entry.channel.ext_channel = survey.channel();
        survey.fill(entry, 2407, 1);
    }
}

constexpr wireless_conf kBss[4] = {};

void parse_stations(TextStream& stream, station_list& list, bool library) {
    FILE* const start = stream.from_start();
    if (library)
        list_stations(stream, list, kBss);
    else
        bench::read_stations(start, list, kBss, 4);
}

void parse_survey(std::string_view text, TextStream& stream, ap_list& list, bool library) {
    if (library)
        list_networks(text, list);
    else
        bench::read_survey(stream.from_start(), list);
}

// Repeats the parse into one list, which begins empty each time and must come out full.
template <class List, class Parse>
void measure(benchmark::State& state, Parse parse) {
    const auto list = std::make_unique<List>();
    const auto once = [&] {
        list->count = 0;
        parse(*list);
        benchmark::DoNotOptimize(list->entries);
    };
    once();  // a stream takes its buffer when it is first read
    if (list->count != static_cast<uint32_t>(state.range(0)))
        state.SkipWithError("rows are missing");
    const size_t before = allocations;
    for (auto _ : state) once();
    state.counters["allocations"] = static_cast<double>(allocations - before);
}

void stations(benchmark::State& state, bool library) {
    std::string text = bench::station_table(static_cast<int>(state.range(0)));
    TextStream stream(text);
    measure<station_list>(state,
                          [&](station_list& list) { parse_stations(stream, list, library); });
}

void survey(benchmark::State& state, bool library) {
    std::string text = bench::survey_table(static_cast<int>(state.range(0)));
    TextStream stream(text);
    measure<ap_list>(state, [&](ap_list& list) { parse_survey(text, stream, list, library); });
}

// Only parsers that come to the same records can be compared.
bool parsers_agree() {
    std::string station_text = bench::station_table(STATION_LIST_MAX);
    std::string survey_text = bench::survey_table(AP_LIST_MAX);
    TextStream station_stream(station_text);
    TextStream survey_stream(survey_text);
    const auto station_lists = std::make_unique<station_list[]>(2);
    const auto ap_lists = std::make_unique<ap_list[]>(2);
    for (const bool library : {false, true}) {
        parse_stations(station_stream, station_lists[library], library);
        parse_survey(survey_text, survey_stream, ap_lists[library], library);
    }
    return std::memcmp(&station_lists[0], &station_lists[1], sizeof(station_list)) == 0 &&
           std::memcmp(&ap_lists[0], &ap_lists[1], sizeof(ap_list)) == 0;
}

template <class Benchmark>
void add(const std::string& table, Benchmark run, std::initializer_list<int64_t> sizes) {
    for (const bool library : {true, false}) {
        const std::string name = table + (library ? "/library" : "/plain");
        auto* const row = benchmark::RegisterBenchmark(
            name.c_str(), [run, library](benchmark::State& state) { run(state, library); });
        for (const int64_t rows : sizes) row->Arg(rows);
        row->Repetitions(20)->MinTime(0.01);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (!parsers_agree()) {
        std::fprintf(stderr, "the parsers come to different records\n");
        return 1;
    }
    // Many short repetitions in mixed order: the least of them is the one that nobody disturbed.
    std::vector<char*> all(arguments, arguments + count);
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    all.insert(all.begin() + 1, mixed.data());
    int all_count = count + 1;
    benchmark::Initialize(&all_count, all.data());
    add("stations", stations, {8, 32, 128});
    add("survey", survey, {8, 64, 256});
    bench::RatioReport report;
    benchmark::RunSpecifiedBenchmarks(&report);
    return report.print() ? 0 : 1;
}
