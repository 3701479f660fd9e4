#include "FuzzSupport.h"

#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"

namespace tarvelin::fuzzing {

namespace {

bool IsFraction(double Value) {
  return Value >= 0.0 && Value <= 1.0;
}

// Memory-backed when the system has it: millions of small file writes on a disk file system spend their
// time in the journal, not in the code under test.
std::filesystem::path ScratchParent() {
  std::error_code error;
  return std::filesystem::is_directory("/dev/shm", error) ? std::filesystem::path("/dev/shm")
                                                          : std::filesystem::temp_directory_path();
}

std::string MakeScratchFolder() {
  std::string pattern = (ScratchParent() / "tarvelin-fuzz-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot create a scratch folder");
  }
  return pattern;
}

}  // namespace

MsgResult QuietDialogs::ShowMessage(const std::string&, MsgButtons Buttons, MsgIcon, const std::string&) {
  ++Messages;
  return Buttons == MsgButtons::OK ? MsgResult::OK : Answer;
}

FuzzEnvironment& FuzzEnvironment::Get() {
  static FuzzEnvironment environment;
  return environment;
}

FuzzEnvironment::FuzzEnvironment() : folder_(MakeScratchFolder()) {
  // Every settings read and write lands in the scratch folder, never in the person's own settings.
  const std::string registry = File("registry");
  std::filesystem::create_directory(registry);
  setenv("TARVELIN_REGISTRY_DIR", registry.c_str(), 1);
  Program().UI = &dialogs_;
}

FuzzEnvironment::~FuzzEnvironment() {
  Program().UI = nullptr;
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string FuzzEnvironment::WriteInput(std::string_view Name, std::string_view Bytes) const {
  const std::string fileName = File(Name);
  std::ofstream out(fileName, std::ios::binary | std::ios::trunc);
  out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
  Require(out.good(), "the input file can be written");
  return fileName;
}

QuietDialogs& FuzzEnvironment::FreshDialogs(MsgResult Answer) {
  dialogs_.Answer = Answer;
  dialogs_.Messages = 0;
  Program().UI = &dialogs_;
  return dialogs_;
}

void Require(bool Condition, const char* What) {
  if (!Condition) {
    std::fprintf(stderr, "Property violated: %s\n", What);
    std::abort();
  }
}

void RequireSoundTopic(const TarvelinTopic& Topic) {
  Require(Topic.TotalOptions() >= 1 && Topic.TotalOptions() <= Program().MaxOptions, "option count in range");
  Require(Topic.TotalAttributes() >= 1 && Topic.TotalAttributes() <= Program().MaxAttributes,
          "attribute count in range");
  for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
    Require(IsFraction(Topic.GetWeighting(attribute)), "weighting from 0 to 1");
  }
  for (int16_t option = 0; option < Topic.TotalOptions(); ++option) {
    Require(IsFraction(Topic.GetScore(option)), "score from 0 to 1");
    for (int16_t attribute = 0; attribute < Topic.TotalAttributes(); ++attribute) {
      Require(IsFraction(Topic.GetRating(option, attribute)), "rating from 0 to 1");
    }
  }
}

}  // namespace tarvelin::fuzzing
