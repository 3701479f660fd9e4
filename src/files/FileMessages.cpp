#include "files/FileMessages.h"

#include "startup/modStartup.h"
#include "util/AtomicFile.h"

namespace tarvelin {

MsgResult ShowFileMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon) {
  return Program().UI->ShowMessage(Prompt, Buttons, Icon, Program().AppTitle);
}

void ReportFileError(const char* Headline, const TarvelinError& Error) {
  ShowFileMessage(std::string(Headline) + "\r\rError " + std::to_string(Error.Number()) + "\r" + Error.Description(),
                  MsgButtons::OK, MsgIcon::Critical);
}

bool WriteFileReporting(const std::string& FileName, std::string_view Contents) {
  try {
    WriteFileAtomically(FileName, Contents);
    return true;
  } catch (const TarvelinError& error) {
    ReportFileError(kSaveFailedMessage, error);
    return false;
  }
}

}  // namespace tarvelin
