#include "startup/modStartup.h"

namespace tarvelin {

ProgramState& Program() {
  static ProgramState state;
  return state;
}

void SetModified() {
  if (!Program().IsLoading) {
    Program().Modified = true;
  }
}

}  // namespace tarvelin
