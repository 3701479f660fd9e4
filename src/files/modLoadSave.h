#pragma once

#include <memory>
#include <string>

#include "files/modTopicCSV.h"

namespace tarvelin {

class TarvelinTopic;

// Topic files and the file commands; CSV export and import come with modTopicCSV.h. Every message goes
// through Program().UI with the program's title. Nothing here replaces the caller's topic unless the whole
// file was read and accepted.

// Writes the topic file. Weightings and ratings carry at most four decimal places (rounded, ties to even,
// when the topic itself does not round to four or fewer), so that every saved file loads back. On failure
// the previous file is kept, the failure is reported, and the result is false.
bool SaveTopicFile(const std::string& FileName, const TarvelinTopic& Topic);

// Reads a topic file into a new topic rounded to 3 places, which replaces Topic (keeping Topic's
// NormaliseWeights) on success. A weighting or rating outside 0 to 1 is reported and gives false; more
// than the maximum numbers of options or attributes are cut to them with a notice. Errors reading the
// file or converting its counts, flag and values are raised (TarvelinError) with Topic unchanged.
bool LoadTopicFile(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic);

// Loads a file for the person: a name ending exactly in ".csv" is imported, anything else read as a
// topic file. An error raised while loading is reported once, and the result is false with Topic
// unchanged.
bool LoadTopicReportingErrors(const std::string& FileName, std::unique_ptr<TarvelinTopic>& Topic);

// The save command: asks for a name and writes the topic in the format its ending chooses, case-sensitively
// and with no extension added: ".csv" a CSV export, ".jpg" and ".bmp" a screenshot of the main window, ".pdf"
// and ".html" the decision report, anything else a topic file. True when a topic or CSV file was written or a
// JPEG screenshot saved; the chosen name then becomes the current file name. A report is not the topic saved:
// it gives false, so the current file name and the modified flag stay. Cancel gives false without a message.
bool SaveTopicDialog(std::unique_ptr<TarvelinTopic>& Topic);
// The same with the dialog's file type entry FilterIndex (from 1) selected at first; the entry only offers a
// type, the name typed still chooses it. With the PDF report's entry the proposed name ends in ".pdf", so
// that accepting it writes what was asked for.
bool SaveTopicDialog(std::unique_ptr<TarvelinTopic>& Topic, int FilterIndex);
// The save dialog's entry of the PDF decision report.
inline constexpr int DecisionReportPdfEntry = 5;

// The open command: asks for a topic or CSV file and loads it (see LoadTopicReportingErrors). True when a
// new topic replaced Topic; the chosen name then becomes the current file name.
bool OpenTopicDialog(std::unique_ptr<TarvelinTopic>& Topic);

// Asks whether to save unsaved changes first. True when the caller may go on (no changes, No, or Yes
// followed by a successful save); false when the person cancelled.
bool AskSaveTopicFirst(std::unique_ptr<TarvelinTopic>& Topic);

}  // namespace tarvelin
