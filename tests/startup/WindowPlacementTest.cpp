#include <gtest/gtest.h>

#include "startup/WindowPlacement.h"

namespace tarvelin {
namespace {

// A 1920 x 1200 screen whose panel takes the top 40 pixels, right of a 1280 x 1024 one.
constexpr WindowRect Wide{1280, 40, 1920, 1160};
constexpr WindowRect Small{0, 0, 1280, 1024};

struct Fit {
  const char* Case;
  WindowRect Window, Expected;
  WindowRect Area = Wide;  // without an area the window is left alone
};

class WindowFit : public ::testing::TestWithParam<Fit> {};

TEST_P(WindowFit, ShrinksThenMovesInside) {
  EXPECT_EQ(FitWindowOnScreen(GetParam().Window, GetParam().Area), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, WindowFit,
    ::testing::Values(Fit{"TouchingEveryEdge", {1280, 40, 1920, 1160}, {1280, 40, 1920, 1160}},
                      Fit{"PastTheRightAndBottom", {2900, 1000, 800, 600}, {2400, 600, 800, 600}},
                      Fit{"AboveAndLeft", {1000, -100, 800, 600}, {1280, 40, 800, 600}},
                      // The 200% window of a 1760 x 1400 design on this screen, first placed at y = -100.
                      Fit{"TallerThanTheScreen", {1360, -100, 1760, 1400}, {1360, 40, 1760, 1160}},
                      Fit{"LargerEverywhere", {0, 0, 4000, 3000}, {1280, 40, 1920, 1160}},
                      Fit{"NoArea", {-50, -50, 800, 600}, {-50, -50, 800, 600}, {}}),
    [](const auto& Info) { return std::string(Info.param.Case); });

TEST(ScreenForWindow, PicksTheMostOverlapElseThePrimary) {
  const std::vector<WindowRect> screens{Small, Wide};
  EXPECT_EQ(ScreenForWindow({1400, 100, 800, 600}, screens), 1u);
  EXPECT_EQ(ScreenForWindow({1000, 100, 800, 600}, screens), 1u);  // 520 of its 800 columns on the wide one
  EXPECT_EQ(ScreenForWindow({800, 100, 800, 600}, screens), 0u);
  EXPECT_EQ(ScreenForWindow({5000, 100, 800, 600}, screens), 0u);  // its monitor is gone
  EXPECT_EQ(ScreenForWindow({0, 0, 800, 600}, {}), 0u);
}

}  // namespace
}  // namespace tarvelin
