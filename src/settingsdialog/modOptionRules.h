#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvelin {

// The count a count field stands for once the person leaves it: a number from 1 to MaxCount, rounded to the
// nearest whole number (a tie to the even one); above MaxCount it becomes MaxCount. Blank text, text that is
// not a number and numbers below 1 stand for CurrentCount, so a slip never changes the topic.
int16_t CountFromFieldText(std::string_view Text, int16_t CurrentCount, int16_t MaxCount);

// The title a title field stands for once left: an empty text stands for the topic's current name, since a
// topic always keeps a title.
std::string TitleFromFieldText(std::string_view Text, std::string_view CurrentName);

}  // namespace tarvelin
