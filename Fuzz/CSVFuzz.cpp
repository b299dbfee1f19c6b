#include "Check.h"
#include "Spreadsheet/CSV.h"
#include "Spreadsheet/DataLoader.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string text = CSV::decode(bytes);
    const TextRows rows = CSV::parse(text);
    const DataTable table(rows, "fuzz.csv");
    CHECK(table.rows.rowCount() == table.rowNumbers.size());
    CHECK(!table.headers.empty() || table.rows.rowCount() == 0);
    // What is written reads back: every cell but a last row of one empty cell, which stands for nothing.
    const TextRows again = CSV::parse(CSV::write(rows), U',');
    for (std::size_t row = 0; row < again.rowCount(); ++row)
        for (std::size_t column = 0; column < again.cellCount(row); ++column)
            CHECK(again.cell(row, column) == rows.cell(row, column));
    for (const char* name : {"a.csv", "a.tsv", "a", "a.xlsx", "a.numbers"}) (void)DataLoader::table(bytes, name, 0);
    return 0;
}
