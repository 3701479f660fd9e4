#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

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

// Every file the program writes, written while something goes wrong: the file system refuses the place, the
// disk fills up, or the write stops after any number of bytes. The previous file must survive byte for
// byte, no temporary file may remain, and the person hears of the failure exactly once (the settings,
// which are only a convenience, not at all).

namespace tarvelin {
namespace {

namespace fs = std::filesystem;
using testing::ChildOutcome;
using testing::Fault;
using testing::FolderState;
using testing::ScriptedDialogs;
using testing::StateOf;
using testing::TempFolder;
using testing::WriteBytes;

// A full topic with long names, so that its files span several pages.
std::unique_ptr<TarvelinTopic> LargeTopic() {
  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetTotalAttributes(10);
  topic->SetTotalOptions(10);
  for (int16_t item = 0; item < 10; ++item) {
    topic->SetAttributeName(item, std::string(300, static_cast<char>('a' + item)));
    topic->SetOptionName(item, std::string(300, static_cast<char>('A' + item)));
    topic->SetWeighting(item, item / 9.0);
    for (int16_t option = 0; option < 10; ++option) {
      topic->SetRating(option, item, (option * 10 + item) / 99.0);
    }
  }
  return topic;
}

// The save command, as the person uses it: the name's ending picks the topic file, the CSV export or a
// screenshot.
void SaveAs(ScriptedDialogs& Dialogs, const std::string& Target) {
  Program().CaptureDisplay = [](cDIBSection& Picture) { Picture = testing::PatternPicture(96, 32); };
  Program().DecisionReport = [](const TarvelinTopic&, ReportFormat) { return std::string(9000, 'r'); };
  auto topic = LargeTopic();
  Dialogs.FileAnswers.push_back(Target);
  SaveTopicDialog(topic);
}

// The settings saved on closing, into a hive file in Target's folder. No value changes the file's length, so
// a limit that stops one of the writes stops them all.
void SaveSettingsBeside(ScriptedDialogs&, const std::string& Target) {
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
    "\"WindowWidth\"=dword:00000003\r\n\"WindowHeight\"=dword:00000004\r\n\"Maximized\"=dword:00000000\r\n\r\n"
    "[HKEY_CURRENT_USER\\Software\\Another]\r\n\"Kept\"=\"yes\"\r\n";

struct WriterCase {
  const char* Name;
  const char* FileName;
  void (*Write)(ScriptedDialogs&, const std::string& Target);
  const std::string* Previous;  // the file the write replaces
  const char* Reason;           // what the failure message puts before the error's text; null: not reported
};

const WriterCase kTopicFile{"TopicFile", "topic.tvt", &SaveAs, &kPreviousFile, ""};
const WriterCase kCSVExport{"CSVExport", "topic.csv", &SaveAs, &kPreviousFile, ""};
const WriterCase kJpeg{"JpegScreenshot", "shot.jpg", &SaveAs, &kPreviousFile, "Failed to save to JPG "};
const WriterCase kBmp{"BmpScreenshot", "shot.bmp", &SaveAs, &kPreviousFile, ""};
const WriterCase kReport{"DecisionReport", "report.pdf", &SaveAs, &kPreviousFile, ""};
const WriterCase kSettingsHive{"SettingsHive", "user.reg", &SaveSettingsBeside, &kPreviousHive, nullptr};

void PrintTo(const WriterCase& Writer, std::ostream* Out) {
  *Out << Writer.Name;
}

std::vector<std::string> ExpectedMessages(const WriterCase& Writer, int32_t Number) {
  if (Writer.Reason == nullptr) {
    return {};
  }
  return {"An error occurred whilst saving the file!\r\rError " + std::to_string(Number) + "\r" + Writer.Reason +
          TarvelinError::RuntimeFault(Number, "").Description()};
}

std::vector<std::string> NamesIn(const FolderState& State) {
  std::vector<std::string> names;
  for (const auto& entry : State) {
    names.push_back(entry.first);
  }
  return names;
}

ChildOutcome RunWriter(const WriterCase& Writer, const TempFolder& Folder, const std::string& Target,
                       const Fault& Fault) {
  return testing::RunWithFault(Folder.Path(), Fault, [&](ScriptedDialogs& Dialogs) { Writer.Write(Dialogs, Target); });
}

void ExpectFailedCleanly(const WriterCase& Writer, const ChildOutcome& Outcome, const FolderState& Before,
                         int32_t Number) {
  ASSERT_EQ(Outcome.How, ChildOutcome::End::Finished);
  EXPECT_EQ(Outcome.Messages, ExpectedMessages(Writer, Number));
  EXPECT_EQ(NamesIn(Outcome.After), NamesIn(Before)) << "a file was left behind or lost";
  EXPECT_TRUE(Outcome.After == Before) << "a previous file was changed";
}

// ---- Places that cannot be written ----

struct PlaceCase {
  const char* Name;
  int32_t Number;
  // Sets the place up in Folder and returns the name to write to; Previous is kept wherever there is room.
  std::string (*Prepare)(const fs::path& Folder, const std::string& FileName, const std::string& Previous);
  bool Unprivileged = false;
};

const PlaceCase kTargetIsAFolder{"TargetIsAFolder", ErrPathFileAccess,
                                 [](const fs::path& Folder, const std::string& Name, const std::string& Previous) {
                                   fs::create_directory(Folder / Name);
                                   WriteBytes((Folder / Name / Name).string(), Previous);
                                   return (Folder / Name).string();
                                 }};
// A name that leads to the device that is always full. Writing to it in place would "succeed" into
// nothing; renaming over it would destroy it, which is why an ordinary user tries.
const PlaceCase kLinkToDevFull{"LinkToDevFull", ErrPathFileAccess,
                               [](const fs::path& Folder, const std::string& Name, const std::string&) {
                                 fs::create_symlink("/dev/full", Folder / Name);
                                 fs::permissions(Folder, fs::perms(0755));
                                 return (Folder / Name).string();
                               },
                               true};
const PlaceCase kFolderIsAFile{"FolderIsAFile", ErrPathNotFound,
                               [](const fs::path& Folder, const std::string& Name, const std::string& Previous) {
                                 WriteBytes((Folder / "folder").string(), Previous);
                                 return (Folder / "folder" / Name).string();
                               }};
const PlaceCase kMissingFolder{"MissingFolder", ErrPathNotFound,
                               [](const fs::path& Folder, const std::string& Name, const std::string&) {
                                 return (Folder / "missing" / Name).string();
                               }};
const PlaceCase kReadOnlyFolder{"ReadOnlyFolder", ErrPermissionDenied,
                                [](const fs::path& Folder, const std::string& Name, const std::string& Previous) {
                                  fs::create_directory(Folder / "locked");
                                  WriteBytes((Folder / "locked" / Name).string(), Previous);
                                  fs::permissions(Folder / "locked", fs::perms(0555));
                                  fs::permissions(Folder, fs::perms(0755));
                                  return (Folder / "locked" / Name).string();
                                },
                                true};

void PrintTo(const PlaceCase& Place, std::ostream* Out) {
  *Out << Place.Name;
}

class UnwritablePlace : public ::testing::TestWithParam<std::tuple<WriterCase, PlaceCase>> {};

TEST_P(UnwritablePlace, IsReportedOnceAndChangesNothing) {
  const auto& [writer, place] = GetParam();
  TempFolder folder;
  const std::string target = place.Prepare(folder.Path(), writer.FileName, *writer.Previous);
  const FolderState before = StateOf(folder.Path());
  Fault fault;
  fault.Unprivileged = place.Unprivileged;
  const ChildOutcome outcome = RunWriter(writer, folder, target, fault);
  if (outcome.How == ChildOutcome::End::FaultUnavailable) {
    GTEST_SKIP() << "this system cannot run the writer as an ordinary user";
  }
  ExpectFailedCleanly(writer, outcome, before, place.Number);
  if (fs::is_symlink(target)) {
    EXPECT_TRUE(fs::is_character_file(fs::read_symlink(target)));
    for (const auto& entry : fs::directory_iterator(fs::read_symlink(target).parent_path())) {
      EXPECT_FALSE(entry.path().filename().string().starts_with("full.tmp-")) << entry.path();
    }
  }
}

std::string CaseName(const ::testing::TestParamInfo<std::tuple<WriterCase, PlaceCase>>& Info) {
  return std::string(std::get<0>(Info.param).Name) + std::get<1>(Info.param).Name;
}

INSTANTIATE_TEST_SUITE_P(AllWriters, UnwritablePlace,
                         ::testing::Combine(::testing::Values(kTopicFile, kCSVExport, kJpeg, kBmp, kSettingsHive),
                                            ::testing::Values(kTargetIsAFolder, kLinkToDevFull, kFolderIsAFile,
                                                              kReadOnlyFolder)),
                         CaseName);
// The settings make their own folder, so only the files the person names can lack one.
INSTANTIATE_TEST_SUITE_P(FilesNamedByThePerson, UnwritablePlace,
                         ::testing::Combine(::testing::Values(kTopicFile, kCSVExport, kJpeg, kBmp),
                                            ::testing::Values(kMissingFolder)),
                         CaseName);
// The report is written as the topic's own files are; a few places show that it keeps to that.
INSTANTIATE_TEST_SUITE_P(Report, UnwritablePlace,
                         ::testing::Combine(::testing::Values(kReport),
                                            ::testing::Values(kTargetIsAFolder, kReadOnlyFolder, kMissingFolder)),
                         CaseName);

// ---- Writes that stop part-way ----

// Each case starts from the previous file, in a folder the writer has already written to once (which
// makes the settings' lock file), and knows how long the new file is.
class WriteStoppedPartWay : public ::testing::TestWithParam<WriterCase> {
 protected:
  void SetUp() override {
    WriteBytes(target_, *GetParam().Previous);
    const ChildOutcome written = RunWriter(GetParam(), folder_, target_, {});
    ASSERT_EQ(written.How, ChildOutcome::End::Finished);
    ASSERT_EQ(written.Messages, std::vector<std::string>{});
    ASSERT_NE(written.After.at(GetParam().FileName), *GetParam().Previous);
    newSize_ = written.After.at(GetParam().FileName).size();
  }

  // Puts the previous file back and runs the writer under Fault; its failure must be a full disk.
  void ExpectFullDiskKeepsThePreviousFile(const Fault& Fault) {
    WriteBytes(target_, *GetParam().Previous);
    const FolderState before = StateOf(folder_.Path());
    const ChildOutcome outcome = RunWriter(GetParam(), folder_, target_, Fault);
    if (outcome.How == ChildOutcome::End::FaultUnavailable) {
      GTEST_SKIP() << "this system cannot give the writer a disk of its own";
    }
    ExpectFailedCleanly(GetParam(), outcome, before, ErrDiskFull);
  }

  TempFolder folder_;
  const std::string target_ = folder_.File(GetParam().FileName);
  size_t newSize_ = 0;
};

// The file size limit stops the new file after Cut bytes, as a full disk or quota would.
TEST_P(WriteStoppedPartWay, AtAnyByteKeepsThePreviousFile) {
  const std::vector<size_t> cuts = testing::CutPoints(newSize_);
  ASSERT_GE(cuts.size(), 10u) << "the new file is too short to cut in many places: " << newSize_ << " bytes";
  for (const size_t cut : cuts) {
    SCOPED_TRACE("cut after " + std::to_string(cut) + " of " + std::to_string(newSize_) + " bytes");
    Fault fault;
    fault.FileSizeLimit = cut;
    ExpectFullDiskKeepsThePreviousFile(fault);
    if (HasFailure()) {
      return;
    }
  }
}

// A real full disk: the writer's folder on a small disk with whole pages to spare, each too few.
TEST_P(WriteStoppedPartWay, OnAFullDiskKeepsThePreviousFile) {
  for (size_t free = 0; free < newSize_; free += testing::PageSize()) {
    SCOPED_TRACE(std::to_string(free) + " bytes free for " + std::to_string(newSize_));
    Fault fault;
    fault.FreeDiskSpace = free;
    ExpectFullDiskKeepsThePreviousFile(fault);
    if (IsSkipped() || HasFailure()) {
      return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllWriters, WriteStoppedPartWay,
                         ::testing::Values(kTopicFile, kCSVExport, kJpeg, kBmp, kSettingsHive),
                         [](const auto& Info) { return std::string(Info.param.Name); });

}  // namespace
}  // namespace tarvelin
