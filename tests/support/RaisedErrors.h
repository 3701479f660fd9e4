#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "util/TarvelinError.h"

namespace tarvelin::testing {

// The number of the TarvelinError the action raises; 0 when it raises none.
inline int32_t ErrorNumberOf(const std::function<void()>& Action) {
  try {
    Action();
  } catch (const TarvelinError& error) {
    return error.Number();
  }
  return 0;
}

// "number [source] description" of the TarvelinError the action raises, or "none", so that one comparison
// checks all three.
inline std::string ErrorOf(const std::function<void()>& Action) {
  try {
    Action();
  } catch (const TarvelinError& error) {
    return std::to_string(error.Number()) + " [" + error.Source() + "] " + error.Description();
  }
  return "none";
}

}  // namespace tarvelin::testing
