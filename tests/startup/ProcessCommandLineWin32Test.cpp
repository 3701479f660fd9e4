#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "startup/modStartup.h"
#include "support/ChildProcess.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

// The child writes the arguments it finds on its own command line, one a line, to the file the test names.
const testing::ChildJob ReportArguments("report-arguments", [] {
  std::string lines;
  for (const std::string& argument : ProgramArguments(0, nullptr)) {
    lines += argument + "\n";
  }
  testing::WriteBytes(std::getenv("TARVELIN_TEST_ARGUMENTS_FILE"), lines);
});

struct GivenCommandLine {
  const char* Case;
  std::string Tail;  // what follows the program's quoted path
  std::string Expected;
};

class ProcessCommandLineWin32 : public ::testing::TestWithParam<GivenCommandLine> {};

TEST_P(ProcessCommandLineWin32, ReachesTheProgramAsItsArguments) {
  const testing::TempFolder folder;
  const std::string report = folder.File("arguments.txt");
  _putenv_s("TARVELIN_TEST_ARGUMENTS_FILE", report.c_str());
  testing::ChildProcess child("report-arguments", GetParam().Tail);
  ASSERT_TRUE(child.Succeeded());
  _putenv_s("TARVELIN_TEST_ARGUMENTS_FILE", "");
  EXPECT_EQ(testing::ReadBytes(report), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(Lines, ProcessCommandLineWin32,
                         ::testing::Values(GivenCommandLine{"Nothing", "", ""},
                                           GivenCommandLine{"SwitchAndQuotedPath", "/p \"C:\\My Topics\\car.tvt\"",
                                                            "/p\nC:\\My Topics\\car.tvt\n"},
                                           GivenCommandLine{"NonAscii", "\"D:\\Caf\xC3\xA9 \xE2\x82\xAC.tvt\"",
                                                            "D:\\Caf\xC3\xA9 \xE2\x82\xAC.tvt\n"}),
                         [](const auto& Info) { return std::string(Info.param.Case); });

}  // namespace
}  // namespace tarvelin
