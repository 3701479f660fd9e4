#pragma once

#include <string>

namespace tarvelin {

// Windows only: the command line the process was started with, program name included.
std::string ProcessCommandLine();

}  // namespace tarvelin
