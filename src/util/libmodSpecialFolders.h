#pragma once

#include <string>

namespace tarvelin {

// The person's documents folder: on POSIX the XDG documents folder when it exists, else the home folder.
// No trailing separator.
std::string DocumentsFolder();

// The folder holding the running program, without a trailing separator.
std::string ProgramFolder();

}  // namespace tarvelin
