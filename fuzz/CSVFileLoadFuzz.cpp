// Reads any bytes as a comma-separated file. Every cell the reader reports must be reachable, and the
// column count must be the widest row.
#include <algorithm>

#include "FuzzSupport.h"
#include "files/CSVFile.h"
#include "util/TarvelinError.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  environment.FreshDialogs();
  std::string fileName = environment.WriteInput("input.csv", AsText(Data, Size));
  CSVFile csv;
  try {
    csv.Load(fileName);
  } catch (const TarvelinError&) {
    return 0;
  }
  int16_t widest = 0;
  for (int16_t row = 0; row < csv.Rows(); ++row) {
    const int16_t cells = csv.CellsInRow(row);
    widest = std::max(widest, cells);
    for (int16_t column = 0; column <= cells; ++column) {
      csv.GetCellData(row, column);
    }
    Require(csv.GetCellData(row, cells).empty(), "no cell past the end of a row");
  }
  Require(widest == csv.Columns(), "the column count is the widest row");
  Require(csv.CellsInRow(csv.Rows()) == 0 && csv.CellsInRow(-1) == 0, "no cells outside the rows");
  return 0;
}
