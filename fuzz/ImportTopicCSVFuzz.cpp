// Imports any bytes as a comma-separated topic. The first byte answers the question whether numbers
// above 1 are percentages (odd: Yes, even: No); the rest is the file. An import reports its failures
// itself, and a topic it builds must be one the window can show.
#include <memory>

#include "FuzzSupport.h"
#include "files/modLoadSave.h"
#include "model/TarvelinTopic.h"
#include "util/TarvelinError.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  if (Size == 0) {
    return 0;
  }
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  QuietDialogs& dialogs = environment.FreshDialogs((Data[0] & 1) != 0 ? MsgResult::Yes : MsgResult::No);
  const std::string fileName = environment.WriteInput("input.csv", AsText(Data + 1, Size - 1));
  auto topic = std::make_unique<TarvelinTopic>();
  const TarvelinTopic* before = topic.get();
  bool imported = false;
  try {
    imported = ImportTopicCSV(fileName, topic);
  } catch (const TarvelinError&) {
    return 0;
  }
  if (!imported) {
    Require(topic.get() == before, "a failed import keeps the topic");
    Require(dialogs.Messages > 0, "a failed import is reported");
    return 0;
  }
  RequireSoundTopic(*topic);
  return 0;
}
