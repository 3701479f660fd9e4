#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <locale>

#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

using testing::ReadBytes;
using testing::ScopedScriptedDialogs;
using testing::ScriptedDialogs;
using testing::TempFolder;
using testing::WriteBytes;
using TopicPtr = std::unique_ptr<TarvelinTopic>;

constexpr const char* kDropped =
    "The file contained more options/attributes than this version of Tarvelin can display.  These extra "
    "options/attributes have been ignored.";
constexpr const char* kInvalidCell =
    ".\r\rFile could not be loaded.\r\rPlease load the file into a spreadsheet program such as Microsoft Excel and "
    "verify that it contains valid data.  In some cases simply loading and resaving the file will solve the "
    "problem.";

std::string DataFile(const char* Name) {
  return (std::filesystem::path(TARVELIN_TEST_DATA_DIR) / Name).make_preferred().string();
}

TopicPtr CarTopic() {
  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetName("Choosing a car");
  topic->SetAttributeName(0, "Price");
  topic->AddAttribute("Comfort");
  topic->SetWeighting(0, 0.75);
  topic->SetOptionName(0, "Hatchback");
  topic->AddOption("Estate");
  topic->SetRating(0, 0, 0.8);
  topic->SetRating(0, 1, 0.4);
  topic->SetRating(1, 0, 0.3);
  topic->SetRating(1, 1, 1.0);
  return topic;
}

// A 10 x 10 topic with every value different and names long enough for a file of several kilobytes.
TopicPtr FullTopic() {
  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetName("Caf\xC3\xA9 " + std::string(200, 'n'));
  topic->SetInvertWeights(true);
  topic->SetTotalAttributes(10);
  topic->SetTotalOptions(10);
  for (int16_t attribute = 0; attribute < 10; ++attribute) {
    topic->SetAttributeName(attribute, "Attribute " + std::string(100, static_cast<char>('a' + attribute)));
    topic->SetWeighting(attribute, attribute / 9.0);
    for (int16_t option = 0; option < 10; ++option) {
      topic->SetOptionName(option, "Option " + std::to_string(option));
      topic->SetRating(option, attribute, (option * 10 + attribute) / 99.0);
    }
  }
  return topic;
}

void ExpectSameValues(const TarvelinTopic& Loaded, const TarvelinTopic& Saved, double Tolerance) {
  EXPECT_EQ(Loaded.Name(), Saved.Name());
  ASSERT_EQ(Loaded.TotalAttributes(), Saved.TotalAttributes());
  ASSERT_EQ(Loaded.TotalOptions(), Saved.TotalOptions());
  for (int16_t attribute = 0; attribute < Saved.TotalAttributes(); ++attribute) {
    EXPECT_EQ(Loaded.GetAttributeName(attribute), Saved.GetAttributeName(attribute));
    EXPECT_NEAR(Loaded.GetWeighting(attribute), Saved.GetWeighting(attribute), Tolerance) << attribute;
    for (int16_t option = 0; option < Saved.TotalOptions(); ++option) {
      EXPECT_EQ(Loaded.GetOptionName(option), Saved.GetOptionName(option));
      EXPECT_NEAR(Loaded.GetRating(option, attribute), Saved.GetRating(option, attribute), Tolerance);
    }
  }
}

// The example topic's files, byte for byte as the data files and the decimal export hold them.
void ExpectTheExampleFiles(const TempFolder& Folder) {
  const TopicPtr topic = CarTopic();
  ASSERT_TRUE(SaveTopicFile(Folder.File("car.tvt"), *topic));
  EXPECT_EQ(ReadBytes(Folder.File("car.tvt")), ReadBytes(DataFile("choosing-a-car.tvt")));
  Program().DisplayAsDecimal = false;
  ExportTopicCSV(Folder.File("car.csv"), *topic);
  EXPECT_EQ(ReadBytes(Folder.File("car.csv")), ReadBytes(DataFile("choosing-a-car.csv")));
  Program().DisplayAsDecimal = true;
  ExportTopicCSV(Folder.File("car.csv"), *topic);
  EXPECT_EQ(ReadBytes(Folder.File("car.csv")),
            "Topic: Choosing a car\r\nExported from Tarvelin v1.0\r\n\r\nAttributes,Price,Comfort\r\n"
            "Weightings,0.75,0.5\r\n\r\nRatings,,,,Score\r\nHatchback,0.8,0.4,,0.64\r\nEstate,0.3,1,,0.58\r\n");
}

// Qt sets the C library's locale from the environment, and a German one writes "0,5" through printf: files
// must not change with it.
TEST(TopicFileSave, TheExampleIsWrittenByteForByteUnderADecimalCommaLocaleToo) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  ExpectTheExampleFiles(folder);
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
    GTEST_SKIP() << "no de_DE.UTF-8 locale here (scripts/install-deps makes one)";
  }
  std::locale::global(std::locale("de_DE.UTF-8"));
  ExpectTheExampleFiles(folder);
  std::locale::global(std::locale::classic());
  std::setlocale(LC_ALL, previous.c_str());
  EXPECT_TRUE(dialogs->Messages.empty());
}

TEST(TopicFileLoad, TheExampleIsReadRoundedToThreeKeepingNormalisation) {
  ScopedScriptedDialogs dialogs;
  TopicPtr topic = std::make_unique<TarvelinTopic>();
  topic->SetNormaliseWeights(true);
  ASSERT_TRUE(LoadTopicFile(DataFile("choosing-a-car.tvt"), topic));
  EXPECT_EQ(topic->Rounding(), 3);
  EXPECT_TRUE(topic->NormaliseWeights());
  topic->SetNormaliseWeights(false);
  ExpectSameValues(*topic, *CarTopic(), 0.0);
  EXPECT_TRUE(dialogs->Messages.empty());
}

// Rounding to more than four places (or none) must not write fractions the reader cannot take.
TEST(TopicFile, SavedTopicLoadsBackWithItsValuesAtAnyRounding) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  for (const int16_t rounding : {-1, 3, 5}) {
    SCOPED_TRACE(rounding);
    TopicPtr saved = FullTopic();
    saved->SetRounding(rounding);
    saved->SetDescription("not stored");
    ASSERT_TRUE(SaveTopicFile(folder.File("full.tvt"), *saved));
    TopicPtr loaded;
    ASSERT_TRUE(LoadTopicFile(folder.File("full.tvt"), loaded));
    EXPECT_EQ(loaded->Description(), "");
    EXPECT_TRUE(loaded->InvertWeights());
    ExpectSameValues(*loaded, *saved, rounding == 3 ? 0.0 : 0.0006);
  }
  EXPECT_TRUE(dialogs->Messages.empty());
}

TEST(TopicFileSave, UnroundedValuesAreWrittenToFourPlacesTiesToEven) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  TarvelinTopic topic;
  topic.AddAttribute("");
  topic.SetWeighting(0, 1.0 / 3.0);
  topic.SetWeighting(1, 0.00004);
  topic.SetRating(0, 0, 0.12345);
  topic.SetRating(0, 1, 0.12355);
  ASSERT_TRUE(SaveTopicFile(folder.File("t.tvt"), topic));
  const std::string text = ReadBytes(folder.File("t.tvt"));
  for (const char* line : {"_Weighting=0.3333\r\n", "_Weighting=0\r\n", "Rating0=0.1234\r\n", "Rating1=0.1236\r\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
}

// A topic file whose values beyond 10 x 10 are invalid, so that reading any of them would refuse the file.
std::string TopicFileText(int Options, int Attributes) {
  std::string text = "[Topic]\r\nTotalOptions=" + std::to_string(Options) +
                     "\r\nTotalAttributes=" + std::to_string(Attributes) +
                     "\r\nInvertWeights=False\r\n[Attributes]\r\n";
  for (int attribute = 0; attribute < std::min(Attributes, 12); ++attribute) {
    text += "Attribute" + std::to_string(attribute) + (attribute < 10 ? "_Weighting=0.5\r\n" : "_Weighting=7\r\n");
  }
  for (int option = 0; option < std::min(Options, 12); ++option) {
    text += "[Option" + std::to_string(option) + "]\r\n";
    for (int attribute = 0; attribute < std::min(Attributes, 12); ++attribute) {
      text += "Rating" + std::to_string(attribute) + (option < 10 && attribute < 10 ? "=0.25\r\n" : "=7\r\n");
    }
  }
  return text;
}

TEST(TopicFileLoad, MoreThanTenOptionsOrAttributesAreCutWithOneNotice) {
  TempFolder folder;
  for (const auto& [options, attributes] : {std::pair{12, 3}, std::pair{3, 11}, std::pair{32767, 32767}}) {
    ScopedScriptedDialogs dialogs;
    WriteBytes(folder.File("many.tvt"), TopicFileText(options, attributes));
    TopicPtr topic;
    ASSERT_TRUE(LoadTopicFile(folder.File("many.tvt"), topic)) << options << "x" << attributes;
    EXPECT_EQ(topic->TotalOptions(), std::min(options, 10));
    EXPECT_EQ(topic->TotalAttributes(), std::min(attributes, 10));
    EXPECT_DOUBLE_EQ(topic->GetRating(2, 2), 0.25);
    ASSERT_EQ(dialogs->Messages.size(), 1u);
    EXPECT_EQ(dialogs->Messages[0].Prompt, kDropped);
    EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::Information);
  }
}

// A one-by-one topic file up to the given line of its [Attributes] section.
std::string OneByOne(const std::string& AttributesLine) {
  return "[Topic]\r\nTotalOptions=1\r\nTotalAttributes=1\r\nInvertWeights=0\r\n[Attributes]\r\n" + AttributesLine;
}

std::string LoadError(int32_t Number, const char* Description) {
  return "An error occurred whilst loading the file!\r\rError " + std::to_string(Number) + "\r" + Description;
}

// Every refusal and every raised error reaches the person exactly once; the topic stays as it was. A name
// ending exactly in ".csv" is imported; anything else, "DATA.CSV" included, is read as a topic file.
TEST(TopicLoad, RefusalsAreReportedOnceAndKeepTheTopic) {
  const std::string invalidWeighting = "Invalid weighting for attribute 0.\r\rUnable to load file.";
  const struct {
    const char* FileName;
    std::string Bytes;  // empty: no file at all
    std::string Message;
  } rows[] = {
      {"none.tvt", "", LoadError(53, "File not found")},
      {"DATA.CSV", "Attributes,A,B\r\n", LoadError(13, "Type mismatch")},
      {"count.tvt", "[Topic]\r\nTotalOptions=x\r\n", LoadError(13, "Type mismatch")},
      {"huge.tvt", TopicFileText(40000, 1), LoadError(6, "Overflow")},
      {"flag.tvt", "[Topic]\r\nTotalOptions=1\r\nTotalAttributes=1\r\nInvertWeights=no",
       LoadError(13, "Type mismatch")},
      {"missing.tvt", OneByOne(""), LoadError(94, "Invalid use of Null")},
      {"above.tvt", OneByOne("Attribute0_Weighting=1.001"), invalidWeighting},
      {"negative.tvt", OneByOne("Attribute0_Weighting=-1.5"), invalidWeighting},
      {"rating.tvt", OneByOne("Attribute0_Weighting=0.5\r\n[Option0]\r\nRating0=1.5"),
       "Invalid rating for attribute 0, option 0.\r\rUnable to load file."},
  };
  TempFolder folder;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.FileName);
    ScopedScriptedDialogs dialogs;
    if (!row.Bytes.empty()) {
      WriteBytes(folder.File(row.FileName), row.Bytes);
    }
    TopicPtr topic = CarTopic();
    const TarvelinTopic* before = topic.get();
    EXPECT_FALSE(LoadTopicReportingErrors(folder.File(row.FileName), topic));
    EXPECT_EQ(topic.get(), before);
    ASSERT_EQ(dialogs->Messages.size(), 1u);
    EXPECT_EQ(dialogs->Messages[0].Prompt, row.Message);
    EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::Critical);
  }
}

TEST(TopicCSV, ExportedTopicImportsBackInEitherNumberStyle) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  const TopicPtr saved = FullTopic();
  saved->SetWeighting(9, 0.5);
  for (const bool asDecimal : {false, true}) {
    Program().DisplayAsDecimal = asDecimal;
    ExportTopicCSV(folder.File("full.csv"), *saved);
    TopicPtr loaded;
    ASSERT_TRUE(ImportTopicCSV(folder.File("full.csv"), loaded));
    ExpectSameValues(*loaded, *saved, 1e-14);
  }
  EXPECT_TRUE(dialogs->Messages.empty());
}

// Imports Text answering every question with Answer; the messages are left in Dialogs.
bool ImportText(const std::string& Text, TopicPtr& Topic, ScriptedDialogs& Dialogs, MsgResult Answer = MsgResult::Yes) {
  TempFolder folder;
  WriteBytes(folder.File("in.csv"), Text);
  Dialogs.Answers.assign(4, Answer);
  return ImportTopicCSV(folder.File("in.csv"), Topic);
}

TEST(TopicCSVImport, KeywordRowsAreFoundInAnyOrderAndCase) {
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  ASSERT_TRUE(LoadTopicReportingErrors(DataFile("hand-laid.csv"), topic));
  TopicPtr expected = CarTopic();
  expected->SetName("Second car");
  expected->SetOptionName(0, "Estate");
  expected->SetOptionName(1, "Hatchback");
  expected->SetRating(0, 0, 0.3);
  expected->SetRating(0, 1, 1.0);
  expected->SetRating(1, 0, 0.8);
  expected->SetRating(1, 1, 0.5);  // blank cell: the rating is left as it was
  ExpectSameValues(*topic, *expected, 0.0);
  EXPECT_TRUE(dialogs->Messages.empty());
}

TEST(TopicCSVImport, TopicRowNamesTheTopic) {
  for (const auto& [rows, name] :
       {std::pair{"Topic: My car ", "My car"}, std::pair{"Topicality", "ality"}, std::pair{"No,topic", "New Topic"}}) {
    ScopedScriptedDialogs dialogs;
    TopicPtr topic;
    ASSERT_TRUE(ImportText(std::string(rows) + "\r\nAttributes,Aa\r\n", topic, *dialogs));
    EXPECT_EQ(topic->Name(), name);
  }
}

// "75%", "0.75" and, once the person agrees, "75" are all 0.75; a blank cell is 0. Anything else refuses the
// file at its row and column.
TEST(TopicCSVImport, AWeightingCellIsReadOrRefusedAtItsRowAndColumn) {
  const std::pair<const char*, std::optional<double>> rows[] = {
      {" 75 % ", 0.75},     {"75", 0.75},  {"100", 1.0},           {"1", 1.0},           {"", 0.0},
      {"%", 0.0},           {"1e-1", 0.1}, {"150%", std::nullopt}, {"-5", std::nullopt}, {"100.5", std::nullopt},
      {"abc", std::nullopt}};
  for (const auto& [cell, weighting] : rows) {
    SCOPED_TRACE(cell);
    ScopedScriptedDialogs dialogs;
    TopicPtr topic = CarTopic();
    const TarvelinTopic* before = topic.get();
    const bool imported =
        ImportText("Attributes,Aa,Bb\r\n\r\nWeightings,0.25," + std::string(cell) + ",\r\n", topic, *dialogs);
    ASSERT_EQ(imported, weighting.has_value());
    if (imported) {
      EXPECT_DOUBLE_EQ(topic->GetWeighting(1), *weighting);
      continue;
    }
    EXPECT_EQ(topic.get(), before);
    EXPECT_EQ(dialogs->Messages.back().Prompt,
              std::string("Invalid data encountered in CSV file at Row 3, Column 3") + kInvalidCell);
    EXPECT_EQ(dialogs->Messages.back().Icon, MsgIcon::Exclamation);
  }
}

TEST(TopicCSVImport, NumbersAboveOneAreAskedAboutOnce) {
  const std::string text = "Attributes,Aa,Bb\r\nWeightings,75,0.5\r\nRatings\r\nX,20,30%,,\r\nY,40,50,,\r\n";
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  ASSERT_TRUE(ImportText(text, topic, *dialogs));
  ASSERT_EQ(dialogs->Messages.size(), 1u);
  EXPECT_EQ(dialogs->Messages[0].Prompt,
            "This CSV file contains numbers greater than 1, which aren't marked as percentages.\r\rDo you want to "
            "treat them as percentage values?");
  EXPECT_EQ(dialogs->Messages[0].Buttons, MsgButtons::YesNo);
  EXPECT_DOUBLE_EQ(topic->GetRating(0, 0), 0.2);
  EXPECT_DOUBLE_EQ(topic->GetRating(1, 1), 0.5);

  ScopedScriptedDialogs refusing;
  TopicPtr kept = CarTopic();
  EXPECT_FALSE(ImportText(text, kept, *refusing, MsgResult::No));
  EXPECT_EQ(kept->Name(), "Choosing a car");
  ASSERT_EQ(refusing->Messages.size(), 2u);
  EXPECT_EQ(refusing->Messages[1].Prompt,
            std::string("Invalid data encountered in CSV file at Row 2, Column 2") + kInvalidCell);
}

TEST(TopicCSVImport, AttributesStopAtBlankOrScoreAndOptionsAtABlankName) {
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  ASSERT_TRUE(ImportText("Attributes,A,B,score:,C\r\nRatings,,,\r\nX,0.1,1\r\nY,0.2,0.3\r\n,0.4,0.4\r\nZ,0.9,0.9\r\n",
                         topic, *dialogs));
  EXPECT_EQ(topic->TotalAttributes(), 2);
  ASSERT_EQ(topic->TotalOptions(), 2);
  // "1" is a one-character last field, which the reader drops: the rating stays as it was.
  EXPECT_DOUBLE_EQ(topic->GetRating(0, 1), 0.5);
  EXPECT_DOUBLE_EQ(topic->GetRating(1, 1), 0.3);
  ASSERT_TRUE(ImportText("Attributes,A,,B\r\n", topic, *dialogs));
  EXPECT_EQ(topic->TotalAttributes(), 1);
  EXPECT_TRUE(dialogs->Messages.empty());
}

TEST(TopicCSVImport, MoreThanTenOptionsOrAttributesAreCutWithOneNotice) {
  for (const int count : {10, 12}) {
    std::string text = "Attributes";
    for (int attribute = 0; attribute < count; ++attribute) {
      text += ",A" + std::to_string(attribute);
    }
    text += "\r\nRatings\r\n";
    for (int option = 0; option < count; ++option) {
      // Values beyond the limits are invalid: reading them would refuse the file.
      text += "O" + std::to_string(option) + std::string(10, ',') + (option < 10 ? "0.25,bad" : "bad") + "\r\n";
    }
    ScopedScriptedDialogs dialogs;
    TopicPtr topic;
    ASSERT_TRUE(ImportText(text, topic, *dialogs)) << count;
    EXPECT_EQ(topic->TotalAttributes(), 10);
    EXPECT_EQ(topic->TotalOptions(), 10);
    EXPECT_DOUBLE_EQ(topic->GetRating(9, 9), 0.25);
    EXPECT_EQ(dialogs->Messages.size(), count > 10 ? 1u : 0u);
    if (count > 10) {
      EXPECT_EQ(dialogs->Messages[0].Prompt, kDropped);
    }
  }
}

TEST(TopicCSVImport, UnusableFilesAreReportedOnceAndTheTopicKept) {
  constexpr char kGarbage[] = "\0\xFF\x01,\"\r\n\x80\x81,,\"\"\0";
  std::string manyRows = "Attributes,Aa\r\n";
  for (int row = 1; row < 40000; ++row) {
    manyRows += "x,0.5,0.5\r\n";
  }
  const char* noData = "This file does not contain any topic data that Tarvelin is able to interpret.";
  for (const auto& [bytes, message] :
       {std::pair<std::string, std::string>{"Topic: T\r\nWeightings,0.5\r\n", noData},
        std::pair<std::string, std::string>{std::string(kGarbage, sizeof kGarbage - 1), noData},
        std::pair<std::string, std::string>{manyRows, LoadError(6, "Overflow")}}) {
    ScopedScriptedDialogs dialogs;
    TopicPtr topic = CarTopic();
    const TarvelinTopic* before = topic.get();
    EXPECT_FALSE(ImportText(bytes, topic, *dialogs));
    EXPECT_EQ(topic.get(), before);
    ASSERT_EQ(dialogs->Messages.size(), 1u);
    EXPECT_EQ(dialogs->Messages[0].Prompt, message);
  }
}

}  // namespace
}  // namespace tarvelin
