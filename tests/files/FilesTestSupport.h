#pragma once

#include <cstdint>
#include <functional>

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

}  // namespace tarvelin::testing
