#include <gtest/gtest.h>

#include "util/TarvelinError.h"

namespace tarvelin {
namespace {

TEST(TarvelinErrorRuntimeFault, CarriesTheClassicNumberAndText) {
  const auto overflow = TarvelinError::RuntimeFault(ErrOverflow, "INIFile");
  EXPECT_EQ(overflow.Number(), 6);
  EXPECT_EQ(overflow.Source(), "INIFile");
  EXPECT_EQ(overflow.Description(), "Overflow");
  EXPECT_STREQ(overflow.what(), "Overflow");
  EXPECT_EQ(TarvelinError::RuntimeFault(ErrPathFileAccess, "x").Description(), "Path/File access error");
  EXPECT_EQ(ObjectErrorBase + 1001, static_cast<int32_t>(0x800403E9u));
}

}  // namespace
}  // namespace tarvelin
