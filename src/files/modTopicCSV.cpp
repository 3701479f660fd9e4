#include "files/modTopicCSV.h"

#include <optional>

#include "files/CSVFile.h"
#include "files/FileMessages.h"
#include "files/modNumberText.h"
#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

std::string MajorMinorVersion() {
  const std::string version = TARVELIN_VERSION;
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
      ShowFileMessage("This file does not contain any topic data that Tarvelin is able to interpret.", MsgButtons::OK,
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
      ShowFileMessage("Invalid data encountered in CSV file at Row " + std::to_string(Row + 1) + ", Column " +
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
          ShowFileMessage(
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

void ExportTopicCSV(const std::string& FileName, const TarvelinTopic& Topic) {
  ExportTopicCSVReporting(FileName, Topic);
}

bool ExportTopicCSVReporting(const std::string& FileName, const TarvelinTopic& Topic) {
  return WriteFileReporting(FileName, TopicCSVText(Topic));
}

bool ImportTopicCSV(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic) {
  CSVFile csv;
  std::string resolvedName = FileName;
  try {
    csv.Load(resolvedName);
  } catch (const TarvelinError& error) {
    ReportFileError(kLoadFailedMessage, error);
    return false;
  }
  TopicImport import(csv);
  if (!import.Run()) {
    return false;
  }
  Topic = import.TakeTopic();
  if (import.DataDropped()) {
    ShowFileMessage(kDataDroppedMessage, MsgButtons::OK, MsgIcon::Information);
  }
  return true;
}

}  // namespace tarvelin
