// Reads any bytes as a topic file. A refused file leaves the topic alone and says why; a topic that loads
// must be one the window can show, and saving it must give a file that loads back to the same topic.
#include <memory>

#include "FuzzSupport.h"
#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "util/TarvelinError.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

namespace {

bool SameTopic(const TarvelinTopic& A, const TarvelinTopic& B) {
  if (A.Name() != B.Name() || A.InvertWeights() != B.InvertWeights() || A.TotalOptions() != B.TotalOptions() ||
      A.TotalAttributes() != B.TotalAttributes()) {
    return false;
  }
  for (int16_t attribute = 0; attribute < A.TotalAttributes(); ++attribute) {
    if (A.GetAttributeName(attribute) != B.GetAttributeName(attribute) ||
        A.GetWeighting(attribute) != B.GetWeighting(attribute)) {
      return false;
    }
    for (int16_t option = 0; option < A.TotalOptions(); ++option) {
      if (A.GetRating(option, attribute) != B.GetRating(option, attribute)) {
        return false;
      }
    }
  }
  for (int16_t option = 0; option < A.TotalOptions(); ++option) {
    if (A.GetOptionName(option) != B.GetOptionName(option)) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  QuietDialogs& dialogs = environment.FreshDialogs();
  const std::string fileName = environment.WriteInput("input.tvt", AsText(Data, Size));
  auto topic = std::make_unique<TarvelinTopic>();
  const TarvelinTopic* before = topic.get();
  bool loaded = false;
  try {
    loaded = LoadTopicFile(fileName, topic);
  } catch (const TarvelinError&) {
    Require(topic.get() == before, "a load that raises keeps the topic");
    return 0;
  }
  if (!loaded) {
    Require(topic.get() == before, "a refused load keeps the topic");
    Require(dialogs.Messages > 0, "a refused load is reported");
    return 0;
  }
  RequireSoundTopic(*topic);
  const std::string savedName = environment.File("saved.tvt");
  Require(SaveTopicFile(savedName, *topic), "a loaded topic saves");
  auto reloaded = std::make_unique<TarvelinTopic>();
  Require(LoadTopicFile(savedName, reloaded), "a saved topic loads back");
  Require(SameTopic(*topic, *reloaded), "a saved topic loads back unchanged");
  return 0;
}
