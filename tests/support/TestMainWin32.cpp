#include <gtest/gtest.h>

#include "support/ChildProcess.h"

// A process started by RunInChildProcess does its job and nothing else.
int main(int argc, char** argv) {
  if (const auto status = tarvelin::testing::RunRequestedChildJob()) {
    return *status;
  }
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
