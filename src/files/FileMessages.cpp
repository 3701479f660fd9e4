#include "files/FileMessages.h"

#include "startup/modStartup.h"

namespace tarvelin {

MsgResult ShowFileMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon) {
  return Program().UI->ShowMessage(Prompt, Buttons, Icon, Program().AppTitle);
}

void ReportFileError(const char* Headline, const TarvelinError& Error) {
  ShowFileMessage(std::string(Headline) + "\r\rError " + std::to_string(Error.Number()) + "\r" + Error.Description(),
                  MsgButtons::OK, MsgIcon::Critical);
}

}  // namespace tarvelin
