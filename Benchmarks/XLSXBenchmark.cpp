#include "Spreadsheet/DataLoader.h"
#include "Spreadsheet/XLSX.h"
#include "Spreadsheet/ZipReader.h"
#include "Support/WorkbookWriter.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

using namespace quorvel;

namespace {

/// 100,000 rows by 10 columns: four of shared strings, four of numbers, two of dates.
const std::string& workbook() {
    static const std::string bytes = [] {
        constexpr int rows = 100'000;
        std::vector<std::string> strings;
        std::string cells;
        for (int row = 1; row <= rows; ++row) {
            const std::string number = std::to_string(row);
            cells += "<row r=\"" + number + "\" spans=\"1:10\">";
            for (char column = 'A'; column < 'E'; ++column) {
                const std::size_t index = column == 'A' ? strings.size() : static_cast<std::size_t>(row % 97 * 3);
                if (column == 'A') strings.push_back("<t>Card number " + number + " with a title of its own</t>");
                cells += "<c r=\"" + std::string(1, column) + number + "\" t=\"s\"><v>" +
                         std::to_string(std::min(index, strings.size() - 1)) + "</v></c>";
            }
            const std::vector<std::string> values{std::to_string(row % 10), std::to_string(row * 7919 % 100'000),
                                                  std::to_string(row % 1000) + ".25",
                                                  "0." + std::to_string(1'234'567'890'123'456 + row * 7919LL)};
            for (std::size_t i = 0; i < values.size(); ++i)
                cells +=
                    "<c r=\"" + std::string(1, static_cast<char>('E' + i)) + number + "\"><v>" + values[i] + "</v></c>";
            for (char column = 'I'; column < 'K'; ++column)
                cells += "<c r=\"" + std::string(1, column) + number + "\" s=\"1\"><v>" +
                         std::to_string(43'000 + (row * 31 + column) % 3000) + "</v></c>";
            cells += "</row>";
        }
        test::WorkbookParts parts;
        parts.sharedStrings = test::sharedStringsXML(strings);
        parts.styles = test::stylesXML({"General", "yyyy-mm-dd"});
        return test::workbookBytes(cells, parts);
    }();
    return bytes;
}

void report(benchmark::State& state, double items) {
    state.counters["rows/s"] = benchmark::Counter(items, benchmark::Counter::kIsIterationInvariantRate);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * workbook().size()));
}

void readTable(benchmark::State& state) {
    const std::string& bytes = workbook();
    for (auto _ : state) benchmark::DoNotOptimize(DataLoader::table(bytes, "cards.xlsx", 0));
    report(state, 100'000);
}
BENCHMARK(readTable)->Unit(benchmark::kMillisecond);

void readSheetNames(benchmark::State& state) {
    const std::string& bytes = workbook();
    for (auto _ : state) benchmark::DoNotOptimize(XLSX::sheetNames(bytes));
    report(state, 1);
}
BENCHMARK(readSheetNames)->Unit(benchmark::kMillisecond);

/// What no reader can be faster than: inflating the parts alone.
void inflateOnly(benchmark::State& state) {
    const std::string& bytes = workbook();
    const auto entries = ZipReader::entries(bytes).value();
    for (auto _ : state)
        for (const auto& entry : entries) benchmark::DoNotOptimize(ZipReader::read(entry, bytes));
    report(state, 100'000);
}
BENCHMARK(inflateOnly)->Unit(benchmark::kMillisecond);

}  // namespace
