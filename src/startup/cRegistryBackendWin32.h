#pragma once

#include <memory>

#include "startup/cRegistryBackend.h"

namespace tarvelin {

// Windows only: the platform's registry itself, whatever TARVELIN_REGISTRY_DIR says.
std::shared_ptr<cRegistryBackend> Win32RegistryBackend();

}  // namespace tarvelin
