#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <locale>
#include <sstream>

#include "files/LargeTopic.h"
#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

namespace tarvelin {
namespace {

using testing::LargeTopic;
using testing::ReadBytes;
using testing::ScopedScriptedDialogs;
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
constexpr const char* kPercentQuestion =
    "This CSV file contains numbers greater than 1, which aren't marked as percentages.\r\rDo you want to treat "
    "them as percentage values?";

std::string DataFile(const char* Name) {
  return (std::filesystem::path(TARVELIN_TEST_DATA_DIR) / Name).make_preferred().string();
}

// The example topic, as the data files hold it.
TopicPtr CarTopic() {
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  LoadTopicFile(DataFile("choosing-a-car.tvt"), topic);
  return topic;
}

// "Name [attribute=weighting ...] option(rating ...) ...", so that one comparison checks a whole topic.
std::string Summary(const TarvelinTopic& Topic) {
  std::ostringstream text;
  text << Topic.Name() << " [";
  for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
    text << (attribute == 0 ? "" : " ") << Topic.GetAttributeName(attribute) << "=" << Topic.GetWeighting(attribute);
  }
  text << "]";
  for (int16_t option = 0; option < Topic.TotalOptions(); ++option) {
    text << " " << Topic.GetOptionName(option);
    for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
      text << (attribute == 0 ? "(" : " ") << Topic.GetRating(option, attribute);
    }
    text << ")";
  }
  return text.str();
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
TEST(TopicFile, TheExampleIsReadRoundedToThreeAndWrittenByteForByteUnderADecimalCommaLocaleToo) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  EXPECT_EQ(CarTopic()->Rounding(), 3);
  EXPECT_EQ(Summary(*CarTopic()), "Choosing a car [Price=0.75 Comfort=0.5] Hatchback(0.8 0.4) Estate(0.3 1)");
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

// Rounding to more than four places (or none) must not write fractions the reader cannot take.
TEST(TopicFile, SavedTopicLoadsBackWithItsValuesAtAnyRounding) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  for (const int16_t rounding : {-1, 3, 5}) {
    SCOPED_TRACE(rounding);
    TopicPtr saved = LargeTopic();
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

TEST(TopicFileLoad, MoreThanTenOptionsOrAttributesAreCutWithOneNoticeKeepingNormalisation) {
  TempFolder folder;
  for (const auto& [options, attributes] : {std::pair{12, 3}, std::pair{3, 11}, std::pair{32767, 32767}}) {
    ScopedScriptedDialogs dialogs;
    WriteBytes(folder.File("many.tvt"), TopicFileText(options, attributes));
    TopicPtr topic = std::make_unique<TarvelinTopic>();
    topic->SetNormaliseWeights(true);
    ASSERT_TRUE(LoadTopicFile(folder.File("many.tvt"), topic)) << options << "x" << attributes;
    EXPECT_EQ(topic->TotalOptions(), std::min(options, 10));
    EXPECT_EQ(topic->TotalAttributes(), std::min(attributes, 10));
    EXPECT_DOUBLE_EQ(topic->GetRating(2, 2), 0.25);
    EXPECT_TRUE(topic->NormaliseWeights()) << "the new topic keeps the one it replaces";
    ASSERT_EQ(dialogs->Prompts(), std::vector<std::string>{kDropped});
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

// Every refusal and every raised error reaches the person exactly once; the topic stays as it was.
TEST(TopicLoad, RefusalsAreReportedOnceAndKeepTheTopic) {
  const std::string invalidWeighting = "Invalid weighting for attribute 0.\r\rUnable to load file.";
  const struct {
    const char* FileName;
    std::string Bytes;  // empty: no file at all
    std::string Message;
  } rows[] = {
      {"none.tvt", "", LoadError(53, "File not found")},
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
    ASSERT_EQ(dialogs->Prompts(), std::vector<std::string>{row.Message});
    EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::Critical);
  }
}

TEST(TopicCSV, ExportedTopicImportsBackInEitherNumberStyle) {
  TempFolder folder;
  ScopedScriptedDialogs dialogs;
  const TopicPtr saved = LargeTopic();
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

TEST(TopicCSVImport, KeywordRowsAreFoundInAnyOrderAndCase) {
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  ASSERT_TRUE(LoadTopicReportingErrors(DataFile("hand-laid.csv"), topic));
  // The blank cell leaves its rating as it was.
  EXPECT_EQ(Summary(*topic), "Second car [Price=0.75 Comfort=0.5] Estate(0.3 1) Hatchback(0.8 0.5)");
  EXPECT_TRUE(dialogs->Messages.empty());
}

// An import of Bytes answering every question with Answer: the new topic's summary, or "kept" when the
// topic stayed as it was, followed by every message shown.
std::vector<std::string> Import(const std::string& Bytes, MsgResult Answer = MsgResult::Yes) {
  TempFolder folder;
  WriteBytes(folder.File("in.csv"), Bytes);
  ScopedScriptedDialogs dialogs;
  dialogs->Answers.assign(4, Answer);
  TopicPtr topic = CarTopic();
  const TarvelinTopic* before = topic.get();
  const bool imported = ImportTopicCSV(folder.File("in.csv"), topic);
  std::vector<std::string> shown = dialogs->Prompts();
  shown.insert(shown.begin(), imported ? Summary(*topic) : topic.get() == before ? "kept" : "lost");
  return shown;
}

// Attributes run to a blank cell or the score column, options to a row without a name. Numbers above one
// are percentages only when the person agrees, asked once.
TEST(TopicCSVImport, FilesAreReadOrRefusedAsAWhole) {
  const std::string percentages = "Attributes,Aa,Bb\r\nWeightings,75,0.5\r\nRatings\r\nX,20,30%,,\r\nY,40,50,,\r\n";
  const std::string noData = "This file does not contain any topic data that Tarvelin is able to interpret.";
  const struct {
    std::string Bytes;
    MsgResult Answer;
    std::vector<std::string> Shown;
  } rows[] = {
      {"Topic: My car \r\nAttributes,Aa\r\n", MsgResult::Yes, {"My car [Aa=1] Option 1(0.5)"}},
      {"Topicality\r\nAttributes,Aa\r\n", MsgResult::Yes, {"ality [Aa=1] Option 1(0.5)"}},
      {"No,topic\r\nAttributes,Aa\r\n", MsgResult::Yes, {"New Topic [Aa=1] Option 1(0.5)"}},
      {"Attributes,A,B,score:,C\r\nRatings,,,\r\nX,0.1\r\nY,0.2,0.3\r\n,0.4,0.4\r\nZ,0.9,0.9\r\n",
       MsgResult::Yes,
       {"New Topic [A=0.5 B=0.5] X(0.1 0.5) Y(0.2 0.3)"}},
      {"Attributes,A,,B\r\n", MsgResult::Yes, {"New Topic [A=1] Option 1(0.5)"}},
      {percentages, MsgResult::Yes, {"New Topic [Aa=0.75 Bb=0.5] X(0.2 0.3) Y(0.4 0.5)", kPercentQuestion}},
      {percentages,
       MsgResult::No,
       {"kept", kPercentQuestion,
        std::string("Invalid data encountered in CSV file at Row 2, Column 2") + kInvalidCell}},
      {"Topic: T\r\nWeightings,0.5\r\n", MsgResult::Yes, {"kept", noData}},
      // A line longer than the reader can count.
      {std::string(32766, 'x') + ",ab", MsgResult::Yes, {"kept", LoadError(6, "Overflow")}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Import(row.Bytes, row.Answer), row.Shown) << row.Bytes.substr(0, 40);
  }
}

// "75%", "0.75" and, once the person agrees, "75" are all 0.75; a blank cell is 0. Anything else refuses the
// file at its row and column.
TEST(TopicCSVImport, AWeightingCellIsReadOrRefusedAtItsRowAndColumn) {
  const std::pair<const char*, const char*> rows[] = {{" 75 % ", "0.75"}, {"75", "0.75"}, {"100", "1"},    {"1", "1"},
                                                      {"", "0"},          {"%", "0"},     {"1e-1", "0.1"}, {"150%", ""},
                                                      {"-5", ""},         {"100.5", ""},  {"abc", ""}};
  for (const auto& [cell, weighting] : rows) {
    const auto shown = Import("Attributes,Aa,Bb\r\n\r\nWeightings,0.25," + std::string(cell) + ",\r\n");
    if (*weighting != '\0') {
      EXPECT_EQ(shown[0], "New Topic [Aa=0.25 Bb=" + std::string(weighting) + "] Option 1(0.5 0.5)") << cell;
    } else {
      EXPECT_EQ(shown, (std::vector<std::string>{"kept", std::string("Invalid data encountered in CSV file at Row 3, "
                                                                     "Column 3") +
                                                             kInvalidCell}))
          << cell;
    }
  }
}

TEST(TopicCSVImport, QuestionsAndRefusalsComeWithTheirButtonsAndIcons) {
  TempFolder folder;
  WriteBytes(folder.File("in.csv"), "Attributes,Aa\r\nWeightings,75\r\nRatings\r\nX,abc\r\n");
  ScopedScriptedDialogs dialogs;
  TopicPtr topic;
  EXPECT_FALSE(ImportTopicCSV(folder.File("in.csv"), topic));
  ASSERT_EQ(dialogs->Messages.size(), 2u);
  EXPECT_EQ(dialogs->Messages[0].Buttons, MsgButtons::YesNo);
  EXPECT_EQ(dialogs->Messages[0].Icon, MsgIcon::Question);
  EXPECT_EQ(dialogs->Messages[1].Buttons, MsgButtons::OK);
  EXPECT_EQ(dialogs->Messages[1].Icon, MsgIcon::Exclamation);
}

// Values beyond the limits are invalid: reading any of them would refuse the file.
TEST(TopicCSVImport, MoreThanTenOptionsOrAttributesAreCutWithOneNotice) {
  for (const int count : {10, 12}) {
    std::string text = "Attributes";
    for (int attribute = 0; attribute < count; ++attribute) {
      text += ",A" + std::to_string(attribute);
    }
    text += "\r\nRatings\r\n";
    for (int option = 0; option < count; ++option) {
      text += "O" + std::to_string(option) + std::string(10, ',') + (option < 10 ? "0.25,bad" : "bad") + "\r\n";
    }
    const auto shown = Import(text);
    EXPECT_THAT(shown[0], ::testing::HasSubstr(" A9=0.5] O0("));
    EXPECT_THAT(shown[0], ::testing::EndsWith(" O9(0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.25)"));
    EXPECT_EQ(shown.size() == 2 && shown[1] == kDropped, count > 10);
  }
}
}  // namespace
}  // namespace tarvelin
