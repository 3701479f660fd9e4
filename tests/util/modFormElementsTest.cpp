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

TEST(FitCaption, KeepsACaptionThatFitsWithItsMargin) {
  const auto fitted = FitCaption("Cost", 60, MeasureByCharacters);
  EXPECT_EQ(fitted.Text, "Cost");
  EXPECT_EQ(fitted.Left, 0);
}

TEST(FitCaption, ShortensWithAnEllipsisUntilTheMarginFits) {
  // "Comfort" + "SS" is 90 wide; in 80 units "Comfo…SS" is the longest that fits.
  EXPECT_EQ(FitCaption("Comfort", 80, MeasureByCharacters).Text, "Comfo\xE2\x80\xA6");
}

TEST(FitCaption, TrimsBlanksLeftBehindByTheCut) {
  EXPECT_EQ(FitCaption("Fuel  economy", 80, MeasureByCharacters).Text, "Fuel\xE2\x80\xA6");
}

TEST(FitCaption, StopsAtTwoCharactersAndCutsWholeUtf8Characters) {
  EXPECT_EQ(FitCaption("Abcdef", 5, MeasureByCharacters).Text, "A\xE2\x80\xA6");
  EXPECT_EQ(FitCaption("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 60, MeasureByCharacters).Text,
            "\xC3\xA9\xC3\xA9\xC3\xA9\xE2\x80\xA6");
}

TEST(FitCaption, PlacesTheTextForRightAndCentredAlignment) {
  EXPECT_EQ(FitCaption("Cost", 100, MeasureByCharacters, CaptionAlignment::Right).Left, 60);
  EXPECT_EQ(FitCaption("Cost", 100, MeasureByCharacters, CaptionAlignment::Centre).Left, 30);
}

}  // namespace
}  // namespace tarvelin
