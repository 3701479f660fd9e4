// Reads any bytes as the current user's hive file of the portable registry. Every key and value reached
// through the registry's own calls must read without fault; a hive that parses must write out as text
// that parses to the same hive; and a damaged hive must give way to the next write.
#include <optional>
#include <string>

#include "FuzzSupport.h"
#include "startup/RegistryData.h"
#include "startup/cRegistryBackendHive.h"
#include "startup/cRegistryHive.h"
#include "util/libmodGenericTextFunctions.h"

using namespace tarvelin;
using namespace tarvelin::fuzzing;

namespace {

// Each call reads the file afresh, so the walk is cut off after a few dozen keys to stay fast.
constexpr int MostKeysWalked = 48;

void Walk(cRegistryBackendHive& Backend, const std::string& Section, int& KeysLeft) {
  if (--KeysLeft < 0) {
    return;
  }
  const RegistryKeyPath key{"", ERegistryClassKey::CurrentUser, Section};
  for (const std::string& name : Backend.EnumerateValues(key)) {
    const auto value = Backend.QueryValue(key, name);
    Require(value.has_value(), "every listed value can be read");
    TextFromRegistryBytes(value->Bytes);
    NumberFromRegistryBytes(value->Bytes, value->Type);
  }
  for (const std::string& subKey : Backend.EnumerateSections(key)) {
    Walk(Backend, Section.empty() ? subKey : Section + "\\" + subKey, KeysLeft);
  }
}

void RequireStableText(std::string_view Bytes) {
  const std::string root = RegistryHiveName(ERegistryClassKey::CurrentUser);
  const auto hive = cRegistryHive::Parse(TextFromFileBytes(Bytes), root);
  if (!hive) {
    return;
  }
  const std::string text = hive->Serialise();
  const auto again = cRegistryHive::Parse(text, root);
  Require(again.has_value(), "a written hive parses");
  Require(again->Serialise() == text, "a written hive parses to the same hive");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size) {
  FuzzEnvironment& environment = FuzzEnvironment::Get();
  environment.FreshDialogs();
  environment.WriteInput("registry/user.reg", AsText(Data, Size));
  cRegistryBackendHive backend;
  int keysLeft = MostKeysWalked;
  Walk(backend, "", keysLeft);
  RequireStableText(AsText(Data, Size));

  const RegistryKeyPath probeKey{"", ERegistryClassKey::CurrentUser, "Software\\Probe"};
  const RegistryData probe = RegistryDataFromNumber(0x12345678u);
  Require(backend.SetValue(probeKey, "Probe", probe), "a write replaces whatever hive was there");
  Require(backend.QueryValue(probeKey, "Probe") == probe, "a written value reads back");
  return 0;
}
