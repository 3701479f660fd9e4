#pragma once

#include <memory>
#include <string>

namespace tarvelin {

class TarvelinTopic;

// CSV export and import of a topic, for spreadsheets. Every message goes through Program().UI with the
// program's title; nothing here replaces the caller's topic unless the whole file was read and accepted.

// Writes the topic as comma-separated rows for spreadsheets, numbers as decimals or percentages by the
// DisplayAsDecimal setting. A failure is reported; the previous file is kept.
void ExportTopicCSV(const std::string& FileName, const TarvelinTopic& Topic);
// The same, telling whether the file was written: a failed export must not let the save-first question go
// on to discard the topic.
bool ExportTopicCSVReporting(const std::string& FileName, const TarvelinTopic& Topic);

// Reads a comma-separated file by its keyword rows ("Topic:", "Attributes", "Weightings", "Ratings" or
// "Options") into a new topic, which replaces Topic on success. Every failure (unreadable file, no
// attributes row, invalid value) is reported and gives false with Topic unchanged.
bool ImportTopicCSV(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic);

}  // namespace tarvelin
