#include "files/modLoadSave.h"

#include <algorithm>
#include <optional>

#include "files/CSVFile.h"
#include "files/INIFile.h"
#include "files/modNumberText.h"
#include "graphics/BmpWriter.h"
#include "graphics/JpegWriter.h"
#include "graphics/cDIBSection.h"
#include "model/TarvelinTopic.h"
#include "model/modRounding.h"
#include "startup/modStartup.h"
#include "util/AtomicFile.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/modPath.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "modLoadSave";
constexpr const char* kProgramVersion = TARVELIN_VERSION;
constexpr const char* kSaveFailed = "An error occurred whilst saving the file!";
constexpr const char* kLoadFailed = "An error occurred whilst loading the file!";
constexpr const char* kDataDropped =
    "The file contained more options/attributes than this version of Tarvelin can display.  These extra "
    "options/attributes have been ignored.";

// The reader's fraction parser holds at most four digits safely.
constexpr int16_t kMaxFileDecimals = 4;

MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon) {
  return Program().UI->ShowMessage(Prompt, Buttons, Icon, Program().AppTitle);
}

void ReportError(const char* Headline, const TarvelinError& Error) {
  ShowMessage(std::string(Headline) + "\r\rError " + std::to_string(Error.Number()) + "\r" + Error.Description(),
              MsgButtons::OK, MsgIcon::Critical);
}

// ---- Topic files ----

double ValueForTopicFile(double Value, int16_t Rounding) {
  if (Rounding < 0 || Rounding > kMaxFileDecimals) {
    return BankersRound(Value, kMaxFileDecimals);
  }
  return Value;
}

std::string TopicFileText(const TarvelinTopic& Topic) {
  INIFile ini;
  ini.AddComment("");
  ini.AddComment(Program().AppTitle + " - Parameter Settings");
  ini.AddComment("");
  ini.AddComment("Be careful when hand editing this file - incorrect entries may cause unwanted behaviour!");
  ini.AddComment("");
  ini.UseSection("Tarvelin");
  ini.AddParameter("AppVersion", kProgramVersion);
  ini.UseSection("Topic");
  ini.AddParameter("Name", Topic.Name());
  ini.AddParameter("TotalOptions", std::to_string(Topic.TotalOptions()));
  ini.AddParameter("TotalAttributes", std::to_string(Topic.TotalAttributes()));
  ini.AddParameter("InvertWeights", Topic.InvertWeights() ? "True" : "False");
  ini.UseSection("Attributes");
  for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
    const std::string key = "Attribute" + std::to_string(attribute);
    ini.AddParameter(key + "_Name", Topic.GetAttributeName(attribute));
    ini.AddNumericParameter(key + "_Weighting", ValueForTopicFile(Topic.GetWeighting(attribute), Topic.Rounding()));
  }
  for (int16_t option = 0; option < Topic.TotalOptions(); ++option) {
    ini.UseSection("Option" + std::to_string(option));
    ini.AddParameter("Name", Topic.GetOptionName(option));
    for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
      ini.AddNumericParameter("Rating" + std::to_string(attribute),
                              ValueForTopicFile(Topic.GetRating(option, attribute), Topic.Rounding()));
    }
  }
  return ini.FileText();
}

// Every lookup passes "" as its default, so a missing key reads as an empty text and then fails to convert.
std::string TextOf(const INIFile& Ini, const std::string& Section, const std::string& Key) {
  return *Ini.GetParameterValue(Section, Key, "");
}

int16_t CountOf(const INIFile& Ini, const std::string& Key) {
  const auto number = NumberFromText(TextOf(Ini, "Topic", Key));
  if (!number) {
    throw TarvelinError::RuntimeFault(ErrTypeMismatch, kSource);
  }
  return ToInteger16(*number, kSource);
}

bool FlagOf(const INIFile& Ini, const std::string& Key) {
  const std::string text = TextOf(Ini, "Topic", Key);
  if (EqualsIgnoreCase(text, "True") || EqualsIgnoreCase(text, "False")) {
    return EqualsIgnoreCase(text, "True");
  }
  const auto number = NumberFromText(text);
  if (!number) {
    throw TarvelinError::RuntimeFault(ErrTypeMismatch, kSource);
  }
  return *number != 0.0;
}

double ValueOf(const INIFile& Ini, const std::string& Section, const std::string& Key) {
  const auto number = Ini.GetNumericParameterValue(Section, Key, "");
  if (!number) {
    throw TarvelinError::RuntimeFault(ErrInvalidUseOfNull, kSource);
  }
  return *number;
}

bool IsValidValue(double Value) {
  return Value >= 0.0 && Value <= 1.0;
}

// Reads the names and values into Topic, whose counts are already set. False after reporting a value
// outside 0 to 1.
bool ReadTopicValues(const INIFile& Ini, TarvelinTopic& Topic) {
  for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
    const std::string key = "Attribute" + std::to_string(attribute);
    Topic.SetAttributeName(attribute, TextOf(Ini, "Attributes", key + "_Name"));
    const double weighting = ValueOf(Ini, "Attributes", key + "_Weighting");
    if (!IsValidValue(weighting)) {
      ShowMessage("Invalid weighting for attribute " + std::to_string(attribute) + ".\r\rUnable to load file.",
                  MsgButtons::OK, MsgIcon::Critical);
      return false;
    }
    Topic.SetWeighting(attribute, weighting);
  }
  for (int16_t option = 0; option < Topic.TotalOptions(); ++option) {
    const std::string section = "Option" + std::to_string(option);
    Topic.SetOptionName(option, TextOf(Ini, section, "Name"));
    for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
      const double rating = ValueOf(Ini, section, "Rating" + std::to_string(attribute));
      if (!IsValidValue(rating)) {
        ShowMessage("Invalid rating for attribute " + std::to_string(attribute) + ", option " + std::to_string(option) +
                        ".\r\rUnable to load file.",
                    MsgButtons::OK, MsgIcon::Critical);
        return false;
      }
      Topic.SetRating(option, attribute, rating);
    }
  }
  return true;
}

// ---- CSV ----

std::string MajorMinorVersion() {
  const std::string version = kProgramVersion;
  return version.substr(0, version.find('.', version.find('.') + 1));
}

std::string DisplayedNumber(double Value) {
  if (Program().DisplayAsDecimal) {
    return PlainNumberText(Value);
  }
  return PlainNumberText(Value * 100.0) + "%";
}

std::string TopicCSVText(const TarvelinTopic& Topic) {
  const int16_t attributes = Topic.TotalAttributes();
  std::string text = "Topic: " + Topic.Name() + "\r\n";
  text += "Exported from " + Program().AppTitle + " v" + MajorMinorVersion() + "\r\n\r\n";
  text += "Attributes";
  for (int16_t attribute = 0; attribute < attributes; ++attribute) {
    text += "," + Topic.GetAttributeName(attribute);
  }
  text += "\r\nWeightings";
  for (int16_t attribute = 0; attribute < attributes; ++attribute) {
    text += "," + DisplayedNumber(Topic.GetWeighting(attribute));
  }
  text += "\r\n\r\nRatings" + std::string(static_cast<size_t>(attributes), ',') + ",,Score\r\n";
  for (int16_t option = 0; option < Topic.TotalOptions(); ++option) {
    text += Topic.GetOptionName(option);
    for (int16_t attribute = 0; attribute < attributes; ++attribute) {
      text += "," + DisplayedNumber(Topic.GetRating(option, attribute));
    }
    text += ",," + DisplayedNumber(Topic.GetScore(option)) + "\r\n";
  }
  return text;
}

// One import of a read CSV grid into a new topic. Rows and columns count from 0 here and from 1 in
// messages, as a spreadsheet shows them.
class TopicImport {
 public:
  explicit TopicImport(const CSVFile& Csv) : csv_(Csv), topic_(std::make_unique<TarvelinTopic>()) {}

  // False after reporting why the file cannot be taken.
  bool Run() {
    pFindKeywordRows();
    if (!attributesRow_) {
      ShowMessage("This file does not contain any topic data that Tarvelin is able to interpret.", MsgButtons::OK,
                  MsgIcon::Exclamation);
      return false;
    }
    pReadAttributes();
    return pReadWeightings() && pReadOptions();
  }

  std::unique_ptr<TarvelinTopic> TakeTopic() { return std::move(topic_); }
  bool DataDropped() const { return dataDropped_; }

 private:
  enum class CellKind { Blank, Invalid, Number };
  struct CellValue {
    CellKind Kind = CellKind::Blank;
    double Value = 0.0;
  };

  std::string pCell(int16_t Row, int16_t Column) const { return TrimBlanks(csv_.GetCellData(Row, Column)); }

  void pFindKeywordRows() {
    bool topicFound = false;
    for (int16_t row = 0; row < csv_.Rows(); ++row) {
      const std::string cell = pCell(row, 0);
      const std::string keyword = LowerCase(cell);
      if (keyword.empty()) {
        continue;
      }
      if (!topicFound && keyword.starts_with("topic")) {
        std::string name = TrimBlanks(cell.substr(keyword.starts_with("topic:") ? 6 : 5));
        topic_->SetName(name.empty() ? pCell(row, 1) : std::move(name));
        topicFound = true;
      } else if (keyword == "attributes" || keyword == "attributes:") {
        attributesRow_ = row;
      } else if (keyword == "weightings" || keyword == "weightings:") {
        weightingsRow_ = row;
      } else if (keyword == "ratings" || keyword == "ratings:" || keyword == "options" || keyword == "options:") {
        ratingsRow_ = row;
      }
    }
  }

  // Names run from the second cell to the first blank cell or the score column.
  void pReadAttributes() {
    int16_t count = 0;
    for (int16_t column = 1; column < csv_.Columns(); ++column) {
      std::string name = pCell(*attributesRow_, column);
      const std::string keyword = LowerCase(name);
      if (name.empty() || keyword == "score" || keyword == "score:") {
        break;
      }
      if (count == Program().MaxAttributes) {
        dataDropped_ = true;
        break;
      }
      if (count == 0) {
        topic_->SetAttributeName(0, std::move(name));
      } else {
        topic_->AddAttribute(std::move(name));
      }
      ++count;
    }
  }

  bool pReadWeightings() {
    if (!weightingsRow_) {
      return true;
    }
    for (int16_t attribute = 0; attribute < topic_->TotalAttributes(); ++attribute) {
      const CellValue value = pReadValue(*weightingsRow_, static_cast<int16_t>(attribute + 1));
      if (value.Kind == CellKind::Invalid) {
        return false;
      }
      topic_->SetWeighting(attribute, value.Value);
    }
    return true;
  }

  // Option rows follow the ratings row down to the first row without a name.
  bool pReadOptions() {
    if (!ratingsRow_) {
      return true;
    }
    int16_t count = 0;
    for (int16_t row = static_cast<int16_t>(*ratingsRow_ + 1); row < csv_.Rows(); ++row) {
      std::string name = pCell(row, 0);
      if (name.empty()) {
        break;
      }
      if (count == Program().MaxOptions) {
        dataDropped_ = true;
        break;
      }
      if (count == 0) {
        topic_->SetOptionName(0, std::move(name));
      } else {
        topic_->AddOption(std::move(name));
      }
      if (!pReadRatings(row, count)) {
        return false;
      }
      ++count;
    }
    return true;
  }

  bool pReadRatings(int16_t Row, int16_t Option) {
    for (int16_t attribute = 0; attribute < topic_->TotalAttributes(); ++attribute) {
      const CellValue value = pReadValue(Row, static_cast<int16_t>(attribute + 1));
      if (value.Kind == CellKind::Invalid) {
        return false;
      }
      if (value.Kind == CellKind::Number) {
        topic_->SetRating(Option, attribute, value.Value);
      }
    }
    return true;
  }

  // A blank cell reads as 0 (its kind says it was blank); an invalid one has been reported.
  CellValue pReadValue(int16_t Row, int16_t Column) {
    const CellValue value = pParseValue(pCell(Row, Column));
    if (value.Kind == CellKind::Invalid) {
      ShowMessage("Invalid data encountered in CSV file at Row " + std::to_string(Row + 1) + ", Column " +
                      std::to_string(Column + 1) +
                      ".\r\rFile could not be loaded.\r\rPlease load the file into a spreadsheet program such as "
                      "Microsoft Excel and verify that it contains valid data.  In some cases simply loading and "
                      "resaving the file will solve the problem.",
                  MsgButtons::OK, MsgIcon::Exclamation);
    }
    return value;
  }

  // "75%", "0.75" and, once the person agrees, "75" all give 0.75.
  CellValue pParseValue(std::string Text) {
    const bool percentage = !Text.empty() && Text.back() == '%';
    if (percentage) {
      Text.pop_back();
    }
    if (Text.empty()) {
      return {CellKind::Blank, 0.0};
    }
    const auto number = NumberFromText(Text);
    if (!number) {
      return {CellKind::Invalid, 0.0};
    }
    const double value = percentage ? *number / 100.0 : *number;
    if (value < 0.0 || value > (percentage ? 1.0 : 100.0)) {
      return {CellKind::Invalid, 0.0};
    }
    if (value > 1.0 && !pTreatLargeNumbersAsPercentages()) {
      return {CellKind::Invalid, 0.0};
    }
    return {CellKind::Number, value > 1.0 ? value / 100.0 : value};
  }

  bool pTreatLargeNumbersAsPercentages() {
    if (!largeNumbersArePercentages_) {
      largeNumbersArePercentages_ =
          ShowMessage(
              "This CSV file contains numbers greater than 1, which aren't marked as percentages.\r\r"
              "Do you want to treat them as percentage values?",
              MsgButtons::YesNo, MsgIcon::Question) == MsgResult::Yes;
    }
    return *largeNumbersArePercentages_;
  }

  const CSVFile& csv_;
  std::unique_ptr<TarvelinTopic> topic_;
  std::optional<int16_t> attributesRow_, weightingsRow_, ratingsRow_;
  std::optional<bool> largeNumbersArePercentages_;
  bool dataDropped_ = false;
};

}  // namespace

bool SaveTopicFile(const std::string& FileName, const TarvelinTopic& Topic) {
  try {
    WriteFileAtomically(FileName, TopicFileText(Topic));
    return true;
  } catch (const TarvelinError& error) {
    ReportError(kSaveFailed, error);
    return false;
  }
}

bool LoadTopicFile(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic) {
  INIFile ini;
  std::string resolvedName = FileName;
  ini.ReadFile(resolvedName);
  ini.SetRaiseErrorOnBadRequest(true);

  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetRounding(3);
  topic->SetName(TextOf(ini, "Topic", "Name"));
  topic->SetDescription(TextOf(ini, "Topic", "Description"));
  const int16_t options = CountOf(ini, "TotalOptions");
  const int16_t attributes = CountOf(ini, "TotalAttributes");
  topic->SetInvertWeights(FlagOf(ini, "InvertWeights"));
  // Cut before the counts are set, so that a huge count in the file never builds a huge topic.
  const bool dataDropped = options > Program().MaxOptions || attributes > Program().MaxAttributes;
  topic->SetTotalOptions(std::min(options, Program().MaxOptions));
  topic->SetTotalAttributes(std::min(attributes, Program().MaxAttributes));
  if (!ReadTopicValues(ini, *topic)) {
    return false;
  }
  topic->SetNormaliseWeights(Topic && Topic->NormaliseWeights());
  Topic = std::move(topic);
  if (dataDropped) {
    ShowMessage(kDataDropped, MsgButtons::OK, MsgIcon::Information);
  }
  return true;
}

void ExportTopicCSV(const std::string& FileName, const TarvelinTopic& Topic) {
  ExportTopicCSVReporting(FileName, Topic);
}

bool ExportTopicCSVReporting(const std::string& FileName, const TarvelinTopic& Topic) {
  try {
    WriteFileAtomically(FileName, TopicCSVText(Topic));
    return true;
  } catch (const TarvelinError& error) {
    ReportError(kSaveFailed, error);
    return false;
  }
}

bool ImportTopicCSV(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic) {
  CSVFile csv;
  std::string resolvedName = FileName;
  try {
    csv.Load(resolvedName);
  } catch (const TarvelinError& error) {
    ReportError(kLoadFailed, error);
    return false;
  }
  TopicImport import(csv);
  if (!import.Run()) {
    return false;
  }
  Topic = import.TakeTopic();
  if (import.DataDropped()) {
    ShowMessage(kDataDropped, MsgButtons::OK, MsgIcon::Information);
  }
  return true;
}

bool LoadTopicReportingErrors(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic) {
  try {
    if (LastCharacters(FileName, 4) == ".csv") {
      return ImportTopicCSV(FileName, Topic);
    }
    return LoadTopicFile(FileName, Topic);
  } catch (const TarvelinError& error) {
    ReportError(kLoadFailed, error);
    return false;
  }
}

namespace {

constexpr uint32_t kSaveDialogFlags = 0x208802;  // overwrite prompt, path must exist, no read-only, long names
constexpr uint32_t kOpenDialogFlags = 0x201004;  // file must exist, hide read-only, long names
constexpr int32_t kScreenshotQuality = 100;

// The main window's display area, brought up to date, as a picture.
cDIBSection CaptureDisplay() {
  cDIBSection picture;
  if (Program().CaptureDisplay) {
    Program().CaptureDisplay(picture);
  }
  return picture;
}

// Writes a screenshot; true when it was written.
bool SaveScreenshot(const std::string& FileName, bool AsJpeg) {
  try {
    const cDIBSection picture = CaptureDisplay();
    if (AsJpeg) {
      WriteJpegFile(picture, FileName, kScreenshotQuality);
    } else {
      WriteBmpFile(picture, FileName);
    }
    return true;
  } catch (const TarvelinError& error) {
    ReportError(kSaveFailed, error);
    return false;
  }
}

// Writes the decision report the main window makes of Topic. Nothing is written without a window.
void SaveDecisionReport(const std::string& FileName, const TarvelinTopic& Topic, ReportFormat Format) {
  if (!Program().DecisionReport) {
    return;
  }
  try {
    WriteFileAtomically(FileName, Program().DecisionReport(Topic, Format));
  } catch (const TarvelinError& error) {
    ReportError(kSaveFailed, error);
  }
}

}  // namespace

bool SaveTopicDialog(std::unique_ptr<TarvelinTopic>& Topic) {
  return SaveTopicDialog(Topic, 1);
}

bool SaveTopicDialog(std::unique_ptr<TarvelinTopic>& Topic, int FilterIndex) {
  FileDialogRequest request;
  request.Filter =
      "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv|Screenshot - JPG Image (*.jpg)|*.jpg|"
      "Screenshot - Bitmap Image (*.bmp)|*.bmp|Decision report - PDF (*.pdf)|*.pdf|"
      "Decision report - HTML (*.html)|*.html";
  request.FilterIndex = FilterIndex;
  request.Flags = kSaveDialogFlags;
  request.InitialDir = Program().LastUsedDir;
  request.FileName = StripInvalidFileNameChars(Topic->Name());
  if (FilterIndex == DecisionReportPdfEntry) {
    request.FileName += ".pdf";
  }
  const std::optional<std::string> chosen = Program().UI->SaveFile(request);
  if (!chosen) {
    return false;
  }
  Program().LastUsedDir = FolderOfPath(*chosen);
  const std::string extension = LastCharacters(*chosen, 4);
  bool saved = false;
  if (extension == ".csv") {
    saved = ExportTopicCSVReporting(*chosen, *Topic);
  } else if (extension == ".jpg") {
    saved = SaveScreenshot(*chosen, true);
  } else if (extension == ".bmp") {
    SaveScreenshot(*chosen, false);
  } else if (extension == ".pdf") {
    SaveDecisionReport(*chosen, *Topic, ReportFormat::Pdf);
  } else if (LastCharacters(*chosen, 5) == ".html") {
    SaveDecisionReport(*chosen, *Topic, ReportFormat::Html);
  } else {
    saved = SaveTopicFile(*chosen, *Topic);
    if (saved) {
      Program().Modified = false;
    }
  }
  if (saved) {
    Program().CurrentFileName = *chosen;
  }
  return saved;
}

bool OpenTopicDialog(std::unique_ptr<TarvelinTopic>& Topic) {
  FileDialogRequest request;
  request.Filter = "Tarvelin Topic (*.tvt)|*.tvt|Excel CSV file (*.csv)|*.csv";
  request.Flags = kOpenDialogFlags;
  request.InitialDir = Program().LastUsedDir;
  const std::optional<std::string> chosen = Program().UI->OpenFile(request);
  if (!chosen) {
    return false;
  }
  Program().LastUsedDir = FolderOfPath(*chosen);
  if (Program().SettingsDialogHide) {
    Program().SettingsDialogHide();
  }
  const bool loaded = LoadTopicReportingErrors(*chosen, Topic);
  if (loaded) {
    Program().CurrentFileName = *chosen;
    Program().Modified = false;
  } else if (Program().SettingsDialogShow) {
    Program().SettingsDialogShow();
  }
  return loaded;
}

bool AskSaveTopicFirst(std::unique_ptr<TarvelinTopic>& Topic) {
  if (!Program().Modified) {
    return true;
  }
  switch (Program().UI->ShowMessage("Do you want to save this topic first?", MsgButtons::YesNoCancel, MsgIcon::Question,
                                    "Save Topic")) {
    case MsgResult::Yes:
      return SaveTopicDialog(Topic);
    case MsgResult::No:
      return true;
    default:
      return false;
  }
}

}  // namespace tarvelin
