#include "files/modLoadSave.h"

#include <algorithm>
#include <optional>

#include "files/FileMessages.h"
#include "files/INIFile.h"
#include "files/modNumberText.h"
#include "graphics/BmpWriter.h"
#include "graphics/JpegWriter.h"
#include "graphics/cDIBSection.h"
#include "model/TarvelinTopic.h"
#include "model/modRounding.h"
#include "startup/modStartup.h"
#include "util/TarvelinError.h"
#include "util/libmodGenericTextFunctions.h"
#include "util/modPath.h"

namespace tarvelin {

namespace {

constexpr const char* kSource = "modLoadSave";
constexpr const char* kProgramVersion = TARVELIN_VERSION;

// The reader's fraction parser holds at most four digits safely.
constexpr int16_t kMaxFileDecimals = 4;

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
      ShowFileMessage("Invalid weighting for attribute " + std::to_string(attribute) + ".\r\rUnable to load file.",
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
        ShowFileMessage("Invalid rating for attribute " + std::to_string(attribute) + ", option " +
                            std::to_string(option) + ".\r\rUnable to load file.",
                        MsgButtons::OK, MsgIcon::Critical);
        return false;
      }
      Topic.SetRating(option, attribute, rating);
    }
  }
  return true;
}

}  // namespace

bool SaveTopicFile(const std::string& FileName, const TarvelinTopic& Topic) {
  return WriteFileReporting(FileName, TopicFileText(Topic));
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
    ShowFileMessage(kDataDroppedMessage, MsgButtons::OK, MsgIcon::Information);
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
    ReportFileError(kLoadFailedMessage, error);
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
    ReportFileError(kSaveFailedMessage, error);
    return false;
  }
}

// Writes the decision report the main window makes of Topic. Nothing is written without a window.
void SaveDecisionReport(const std::string& FileName, const TarvelinTopic& Topic, ReportFormat Format) {
  if (Program().DecisionReport) {
    WriteFileReporting(FileName, Program().DecisionReport(Topic, Format));
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
