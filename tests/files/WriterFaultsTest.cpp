#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "files/LargeTopic.h"
#include "files/modLoadSave.h"
#include "graphics/PictureTestHelpers.h"
#include "graphics/cDIBSection.h"
#include "model/TarvelinTopic.h"
#include "startup/RegistryTestFolder.h"
#include "startup/modSettings.h"
#include "startup/modStartup.h"
#include "support/FaultInjection.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"
#include "util/TarvelinError.h"

// Every file the program writes, written while something goes wrong: the place cannot be written, the
// disk fills up, or the write stops after any number of bytes. The previous file must survive byte for
// byte, no temporary file may remain, and the person hears of the failure exactly once (the settings,
// which are only a convenience, not at all).

namespace tarvelin {
namespace {

namespace fs = std::filesystem;
using testing::FolderState;
using testing::ScopedScriptedDialogs;
using testing::StateOf;
using testing::TempFolder;
using testing::WriteBytes;

// The save command, as the person uses it: the name's ending picks the topic file, the CSV export or a
// screenshot.
void SaveAs(testing::ScriptedDialogs& Dialogs, const std::string& Target) {
  Program().CaptureDisplay = [](cDIBSection& Picture) { Picture = testing::PatternPicture(96, 32); };
  Program().DecisionReport = [](const TarvelinTopic&, ReportFormat) { return std::string(9000, 'r'); };
  auto topic = testing::LargeTopic();
  Dialogs.FileAnswers.push_back(Target);
  SaveTopicDialog(topic);
  Program().CaptureDisplay = nullptr;
}

// The settings saved on closing, into a hive file in Target's folder. No value changes the file's length, so
// a fault that stops one of the writes stops them all.
void SaveSettingsBeside(testing::ScriptedDialogs&, const std::string& Target) {
  const testing::ScopedEnvironment registry("TARVELIN_REGISTRY_DIR", fs::path(Target).parent_path().string());
  Program().LastUsedDir = "/home/someone/new topics";
  SaveSettings({1200, 2400, 11000, 7000, true});
}

const std::string kPreviousFile("the previous file\r\n\0\xFF", 21);
// As the program itself writes it, parent keys included, so that no write adds to it but the new values.
const std::string kPreviousHive =
    "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software]\r\n\r\n"
    "[HKEY_CURRENT_USER\\Software\\Pelvora]\r\n\r\n[HKEY_CURRENT_USER\\Software\\Pelvora\\Tarvelin]\r\n"
    "\"LastUsedDir\"=\"/home/someone/old "
    "topics\"\r\n\"ShowSettingsOnNew\"=dword:00000000\r\n\"NormaliseWeights\"=dword:00000000\r\n"
    "\"DisplayAsDecimal\"=dword:00000000\r\n\"WindowLeft\"=dword:00000001\r\n\"WindowTop\"=dword:00000002\r\n"
    "\"WindowWidth\"=dword:00000003\r\n\"WindowHeight\"=dword:00000004\r\n\"Maximized\"=dword:00000000\r\n"
    "\"ShowInsight\"=dword:00000000\r\n\"SplitScoreBars\"=dword:00000000\r\n\r\n"
    "[HKEY_CURRENT_USER\\Software\\Another]\r\n\"Kept\"=\"yes\"\r\n";

struct WriterCase {
  const char* Name;
  const char* FileName;
  void (*Write)(testing::ScriptedDialogs&, const std::string& Target);
  const std::string* Previous;  // the file the write replaces
  const char* Reason;           // what the failure message puts before the error's text; null: not reported
};

const WriterCase kWriters[] = {
    {"TopicFile", "topic.tvt", &SaveAs, &kPreviousFile, ""},
    {"CSVExport", "topic.csv", &SaveAs, &kPreviousFile, ""},
    {"JpegScreenshot", "shot.jpg", &SaveAs, &kPreviousFile, "Failed to save to JPG "},
    {"BmpScreenshot", "shot.bmp", &SaveAs, &kPreviousFile, ""},
    {"DecisionReport", "report.pdf", &SaveAs, &kPreviousFile, ""},
    {"SettingsHive", "user.reg", &SaveSettingsBeside, &kPreviousHive, nullptr},
};

std::vector<std::string> ExpectedMessages(const WriterCase& Writer, int32_t Number) {
  if (Writer.Reason == nullptr || Number == 0) {
    return {};
  }
  return {"An error occurred whilst saving the file!\r\rError " + std::to_string(Number) + "\r" + Writer.Reason +
          TarvelinError::RuntimeFault(Number, "").Description()};
}

std::vector<std::string> PromptsOf(const WriterCase& Writer, const std::string& Target) {
  ScopedScriptedDialogs dialogs;
  Writer.Write(*dialogs, Target);
  return dialogs->Prompts();
}

class Writers : public ::testing::TestWithParam<WriterCase> {
 protected:
  // Runs the writer and expects it to fail with Number (none for the settings) and to leave the folder as
  // it was.
  void ExpectFailsCleanly(const std::string& Target, int32_t Number) {
    const FolderState before = StateOf(folder_.Path());
    EXPECT_EQ(PromptsOf(GetParam(), Target), ExpectedMessages(GetParam(), Number));
    EXPECT_EQ(StateOf(folder_.Path()), before) << "a file was changed, left behind or lost";
  }

  TempFolder folder_;
  const std::string target_ = folder_.File(GetParam().FileName);
};

// Names the person may pick that cannot be written: the folder is gone or is a file, or the name stands
// for something that is not a file (renaming over it would destroy it).
TEST_P(Writers, UnwritablePlacesAreReportedAndChangeNothing) {
  const std::string name = GetParam().FileName;
  fs::create_directories(folder_.Path() / "folder" / name);
  WriteBytes(folder_.File("folder") + "/" + name + "/" + name, *GetParam().Previous);
  WriteBytes(folder_.File("file"), *GetParam().Previous);
  ASSERT_EQ(mkfifo(folder_.File("pipe").c_str(), 0644), 0);
  fs::create_symlink(folder_.Path() / "pipe", target_);
  const bool personNamesIt = GetParam().Reason != nullptr;  // the settings make their own folder
  const struct {
    std::string Target;
    int32_t Number;
  } places[] = {
      {folder_.File("folder") + "/" + name, ErrPathFileAccess},
      {target_, ErrPathFileAccess},
      {folder_.File("file") + "/" + name, personNamesIt ? ErrPathNotFound : 0},
      {folder_.File("missing") + "/" + name, personNamesIt ? ErrPathNotFound : 0},
  };
  for (const auto& place : places) {
    SCOPED_TRACE(place.Target);
    if (personNamesIt || place.Number != 0) {
      ExpectFailsCleanly(place.Target, place.Number);
    }
  }
}

// The write stops after any number of bytes, with a full disk or an I/O error.
TEST_P(Writers, AWriteStoppedAtAnyByteKeepsThePreviousFile) {
  WriteBytes(target_, *GetParam().Previous);
  ASSERT_EQ(PromptsOf(GetParam(), target_), std::vector<std::string>{});
  const size_t newSize = testing::ReadBytes(target_).size();
  const std::vector<testing::WriteFault> faults = testing::WriteFaults(newSize);
  ASSERT_GE(faults.size(), 20u) << "the new file is too short to cut in many places: " << newSize << " bytes";
  for (const testing::WriteFault& fault : faults) {
    SCOPED_TRACE("error " + std::to_string(fault.Number) + " after " + std::to_string(fault.Cut) + " of " +
                 std::to_string(newSize) + " bytes");
    WriteBytes(target_, *GetParam().Previous);
    const testing::ScopedWriteFault failing(fault);
    ExpectFailsCleanly(target_, fault.Number);
    if (HasFailure()) {
      return;
    }
  }
}

// The two failures a real file system gives, on a small disk of the test's own: the previous file takes one
// page, and what is left is too little for the new file.
TEST_P(Writers, ARealFullOrReadOnlyDiskKeepsThePreviousFile) {
  PromptsOf(GetParam(), target_);
  const size_t newSize = testing::ReadBytes(target_).size();
  const fs::path place = folder_.Path() / "disk";
  fs::create_directory(place);
  const std::string target = (place / GetParam().FileName).string();
  testing::ScopedPrivateDisk disk(place, (1 + (newSize - 1) / testing::PageSize()) * testing::PageSize());
  if (!disk.Mounted()) {
    GTEST_SKIP() << "this system does not let the tests mount a disk of their own (that takes root)";
  }
  PromptsOf(GetParam(), target);  // makes the settings' lock file, which takes no room
  WriteBytes(target, *GetParam().Previous);
  ExpectFailsCleanly(target, ErrDiskFull);
  ASSERT_TRUE(disk.MakeReadOnly());
  ExpectFailsCleanly(target, ErrPermissionDenied);
}

INSTANTIATE_TEST_SUITE_P(AllWriters, Writers, ::testing::ValuesIn(kWriters),
                         [](const auto& Info) { return std::string(Info.param.Name); });

}  // namespace
}  // namespace tarvelin
