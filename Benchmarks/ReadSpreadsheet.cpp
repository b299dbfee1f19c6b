// ReadSpreadsheet FILE: reads a spreadsheet into a table as the application does and says how large it is; for
// `workbooks`, which measures it beside others.

#include "Spreadsheet/DataLoader.h"

#include <iostream>

using namespace quorvel;

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const auto loaded = DataLoader::load(argv[1], 0);
    if (!loaded || !loaded->result) {
        std::cerr << (loaded ? DataLoader::description(loaded->result.error()) : loaded.error().description()) << '\n';
        return 1;
    }
    std::cout << loaded->result->rows.rowCount() << " rows, " << loaded->result->headers.size() << " columns\n";
}
