#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarvelin {

enum class MsgButtons { OK, YesNo, YesNoCancel };
enum class MsgIcon { None, Critical, Exclamation, Information, Question };
enum class MsgResult { OK, Yes, No, Cancel };

// Flags of a file dialog request, with the meaning of the common file dialog's flags of the same values.
namespace FileDialogFlags {
inline constexpr uint32_t OverwritePrompt = 0x2;
inline constexpr uint32_t HideReadOnly = 0x4;
inline constexpr uint32_t PathMustExist = 0x800;
inline constexpr uint32_t FileMustExist = 0x1000;
}  // namespace FileDialogFlags

// Filter in the "Name (*.ext)|*.ext|..." form; FilterIndex counts from 1.
struct FileDialogRequest {
  std::string Filter;
  int FilterIndex = 1;
  uint32_t Flags = 0;
  std::string InitialDir;
  std::string FileName;
};

// Everything the core says to or asks of the person goes through this interface: the Qt side shows real
// dialogs, the tests script the answers. Message texts may hold single carriage returns as line breaks.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual MsgResult ShowMessage(const std::string& Prompt, MsgButtons Buttons, MsgIcon Icon,
                                const std::string& Title) = 0;
  virtual std::optional<std::string> OpenFile(const FileDialogRequest& Request) = 0;  // nullopt: cancelled
  virtual std::optional<std::string> SaveFile(const FileDialogRequest& Request) = 0;  // nullopt: cancelled
};

}  // namespace tarvelin
