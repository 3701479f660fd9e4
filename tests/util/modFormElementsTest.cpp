#include <gtest/gtest.h>

#include "util/modFormElements.h"

namespace tarvelin {
namespace {

// Ten units per character, the ellipsis counting as one character.
int MeasureByCharacters(std::string_view Text) {
  int characters = 0;
  for (const char c : Text) {
    characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  return characters * 10;
}

TEST(FitCaption, KeepsACaptionThatFitsWithItsMarginAndPlacesIt) {
  EXPECT_EQ(FitCaption("Cost", 60, MeasureByCharacters).Text, "Cost");
  EXPECT_EQ(FitCaption("Cost", 60, MeasureByCharacters).Left, 0);
  EXPECT_EQ(FitCaption("Cost", 100, MeasureByCharacters, CaptionAlignment::Right).Left, 60);
  EXPECT_EQ(FitCaption("Cost", 100, MeasureByCharacters, CaptionAlignment::Centre).Left, 30);
}

// "Comfort" + "SS" is 90 wide; in 80 units "Comfo…SS" is the longest that fits. Blanks left by the cut go,
// at least two characters stay, and UTF-8 characters are cut whole.
TEST(FitCaption, ShortensWithAnEllipsisUntilTheMarginFits) {
  EXPECT_EQ(FitCaption("Comfort", 80, MeasureByCharacters).Text, "Comfo\xE2\x80\xA6");
  EXPECT_EQ(FitCaption("Fuel  economy", 80, MeasureByCharacters).Text, "Fuel\xE2\x80\xA6");
  EXPECT_EQ(FitCaption("Abcdef", 5, MeasureByCharacters).Text, "A\xE2\x80\xA6");
  EXPECT_EQ(FitCaption("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 60, MeasureByCharacters).Text,
            "\xC3\xA9\xC3\xA9\xC3\xA9\xE2\x80\xA6");
}

}  // namespace
}  // namespace tarvelin
