#pragma once

#include <string>
#include <string_view>

#include "startup/Dialogs.h"
#include "util/TarvelinError.h"

namespace tarvelin {

// The messages that topic files and CSV files share, shown with the program's title.

inline constexpr const char* kSaveFailedMessage = "An error occurred whilst saving the file!";
inline constexpr const char* kLoadFailedMessage = "An error occurred whilst loading the file!";
inline constexpr const char* kDataDroppedMessage =
    "The file contained more options/attributes than this version of Tarvelin can display.  These extra "
    "options/attributes have been ignored.";

MsgResult ShowFileMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon);

// Headline, then the error's number and description, as a critical message.
void ReportFileError(const char* Headline, const TarvelinError& Error);

// Replaces FileName with Contents as one atomic write; a failure is shown as a save error. True when written.
bool WriteFileReporting(const std::string& FileName, std::string_view Contents);

}  // namespace tarvelin
