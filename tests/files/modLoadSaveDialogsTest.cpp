#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "files/modLoadSave.h"
#include "graphics/cDIBSection.h"
#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"
#include "util/modPath.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::ScopedScriptedDialogs;
using testing::TempFolder;

// The file commands with scripted dialogs, a fake display to capture and a fresh folder.
class FileCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    topic_ = std::make_unique<TarvelinTopic>();
    topic_->SetName("Car: new or used?");
    Program().LastUsedDir = folder_.Path().string();
    Program().CurrentFileName = "earlier.tvt";
    Program().Modified = true;
    Program().CaptureDisplay = [](cDIBSection& Picture) { Picture.Create(5, 3); };
    Program().DecisionReport = [](const TarvelinTopic&, ReportFormat Format) {
      return std::string(Format == ReportFormat::Pdf ? "%PDF report" : "<!DOCTYPE html>");
    };
  }
  void TearDown() override {
    Program().CaptureDisplay = nullptr;
    Program().DecisionReport = nullptr;
  }

  bool SaveAs(const std::string& Name) {
    dialogs_->FileAnswers.push_back(folder_.File(Name));
    return SaveTopicDialog(topic_);
  }

  TempFolder folder_;
  ScopedScriptedDialogs dialogs_;
  std::unique_ptr<TarvelinTopic> topic_;
};

TEST_F(FileCommands, SaveDialogOffersSixTypesAndTheTopicsNameWithoutReservedCharacters) {
  SaveAs("car.tvt");
  ASSERT_EQ(dialogs_->SaveRequests.size(), 1u);
  const FileDialogRequest& request = dialogs_->SaveRequests[0];
  EXPECT_EQ(request.Filter,
            "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv|Screenshot - JPG Image (*.jpg)|*.jpg|"
            "Screenshot - Bitmap Image (*.bmp)|*.bmp|Decision report - PDF (*.pdf)|*.pdf|"
            "Decision report - HTML (*.html)|*.html");
  EXPECT_EQ(request.FilterIndex, 1);
  EXPECT_EQ(request.Flags, 0x208802u);
  EXPECT_EQ(request.FileName, "Car new or used");
  EXPECT_EQ(request.InitialDir, folder_.Path().string());
}

struct Routing {
  const char* Name;
  bool Result;
  const char* FileStart;  // the first bytes the written file must hold; ";" for a topic file
  bool SetsCurrentFile;
};

class SaveRouting : public FileCommands, public ::testing::WithParamInterface<Routing> {};

// Only saving a topic file clears the modified flag.
TEST_P(SaveRouting, TheLastFourCharactersChooseTheFormatCaseSensitively) {
  const Routing& routing = GetParam();
  EXPECT_EQ(SaveAs(routing.Name), routing.Result);
  EXPECT_EQ(ReadBytes(folder_.File(routing.Name)).substr(0, std::string(routing.FileStart).size()), routing.FileStart);
  EXPECT_EQ(Program().CurrentFileName, routing.SetsCurrentFile ? folder_.File(routing.Name) : "earlier.tvt");
  EXPECT_EQ(Program().LastUsedDir, folder_.Path().string() + PathSeparator());
  EXPECT_EQ(Program().Modified, std::string(routing.FileStart) != ";");
}

INSTANTIATE_TEST_SUITE_P(
    Names, SaveRouting,
    ::testing::Values(Routing{"car.tvt", true, ";", true}, Routing{"report.CSV", true, ";", true},
                      Routing{"car.csv", true, "Topic", true}, Routing{"shot.jpg", true, "\xFF\xD8", true},
                      Routing{"shot.bmp", false, "BM", false}, Routing{"car.pdf", false, "%PDF", false},
                      Routing{"car.html", false, "<!DOCTYPE", false}, Routing{"car.Html", true, ";", true}));

// Cancelling says nothing; a file that cannot be written is reported once. Neither counts as saved.
TEST_F(FileCommands, CancelledOrFailedSavesKeepTheCurrentFile) {
  for (const char* name : {"", "missing/shot.jpg", "missing/topic.csv", "missing/topic.tvt"}) {
    dialogs_->Messages.clear();
    dialogs_->FileAnswers.push_back(*name != '\0' ? std::optional(folder_.File(name)) : std::nullopt);
    EXPECT_FALSE(SaveTopicDialog(topic_)) << name;
    EXPECT_EQ(dialogs_->Messages.size(), *name != '\0' ? 1u : 0u) << name;
    EXPECT_EQ(Program().CurrentFileName, "earlier.tvt");
  }
}

// The answers themselves are followed through the window's commands.
TEST_F(FileCommands, SaveFirstQuestionIsAskedOnlyAboutUnsavedChanges) {
  Program().Modified = false;
  EXPECT_TRUE(AskSaveTopicFirst(topic_));
  EXPECT_TRUE(dialogs_->Messages.empty());
  Program().Modified = true;
  dialogs_->Answers = {MsgResult::Cancel};
  EXPECT_FALSE(AskSaveTopicFirst(topic_));
  ASSERT_EQ(dialogs_->Prompts(), std::vector<std::string>{"Do you want to save this topic first?"});
  EXPECT_EQ(dialogs_->Messages[0].Title, "Save Topic");
  EXPECT_EQ(dialogs_->Messages[0].Buttons, MsgButtons::YesNoCancel);
}

TEST_F(FileCommands, OpenReadsCsvOnlyForTheExactLowerCaseExtension) {
  ExportTopicCSV(folder_.File("DATA.CSV"), *topic_);
  dialogs_->FileAnswers.push_back(folder_.File("DATA.CSV"));
  int hidden = 0, shown = 0;
  Program().SettingsDialogHide = [&] { ++hidden; };
  Program().SettingsDialogShow = [&] { ++shown; };
  TarvelinTopic* before = topic_.get();
  EXPECT_FALSE(OpenTopicDialog(topic_)) << "a CSV file handed to the topic reader does not load";
  EXPECT_EQ(topic_.get(), before);
  EXPECT_EQ(dialogs_->Messages.size(), 1u);
  EXPECT_EQ(hidden, 1);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(dialogs_->OpenRequests[0].Flags, 0x201004u);
  EXPECT_EQ(dialogs_->OpenRequests[0].Filter, "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv");

  ExportTopicCSV(folder_.File("data.csv"), *topic_);
  dialogs_->FileAnswers.push_back(folder_.File("data.csv"));
  EXPECT_TRUE(OpenTopicDialog(topic_));
  EXPECT_NE(topic_.get(), before);
  EXPECT_EQ(Program().CurrentFileName, folder_.File("data.csv"));
  EXPECT_EQ(shown, 1);
  Program().SettingsDialogHide = nullptr;
  Program().SettingsDialogShow = nullptr;
}

}  // namespace
}  // namespace tarvelin
