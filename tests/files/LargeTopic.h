#pragma once

#include <memory>
#include <string>

#include "model/TarvelinTopic.h"

namespace tarvelin::testing {

// A 10 x 10 topic with every value different and names long enough for files that span several pages.
inline std::unique_ptr<TarvelinTopic> LargeTopic() {
  auto topic = std::make_unique<TarvelinTopic>();
  topic->SetName("Caf\xC3\xA9 " + std::string(200, 'n'));
  topic->SetInvertWeights(true);
  topic->SetTotalAttributes(10);
  topic->SetTotalOptions(10);
  for (int16_t item = 0; item < 10; ++item) {
    topic->SetAttributeName(item, std::string(300, static_cast<char>('a' + item)));
    topic->SetOptionName(item, std::string(300, static_cast<char>('A' + item)));
    topic->SetWeighting(item, item / 9.0);
    for (int16_t option = 0; option < 10; ++option) {
      topic->SetRating(option, item, (option * 10 + item) / 99.0);
    }
  }
  return topic;
}

}  // namespace tarvelin::testing
