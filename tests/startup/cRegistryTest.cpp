#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistry.h"
#include "startup/cRegistryBackendHive.h"

namespace tarvelin {
namespace {

using testing::ScopedEnvironment;
using testing::ScopedRegistryFolder;
using Bytes = std::vector<uint8_t>;

constexpr const char* Key = "Software\\Pelvora\\Test";

cRegistry RegistryAt(const std::string& SectionKey, const std::string& ValueKey = {},
                     ERegistryValueType ValueType = ERegistryValueType::String) {
  cRegistry registry;
  registry.SetClassKey(ERegistryClassKey::CurrentUser);
  registry.SetSectionKey(SectionKey);
  registry.SetValueKey(ValueKey);
  registry.SetValueType(ValueType);
  return registry;
}

ERegistryValueType StoredType(const std::string& SectionKey, const std::string& ValueKey) {
  const auto data = cRegistryBackendHive().QueryValue({"", ERegistryClassKey::CurrentUser, SectionKey}, ValueKey);
  return data ? data->Type : ERegistryValueType::None;
}

TEST(cRegistryValue, TextHoldingPercentIsStoredExpandableAndReadExpanded) {
  const ScopedRegistryFolder registry;
  const ScopedEnvironment variable("TARVELIN_TEST_FOLDER", "/data");
  cRegistry plain = RegistryAt(Key, "Plain");
  plain.SetValue("C:\\Users");
  cRegistry expandable = RegistryAt(Key, "Expandable");
  expandable.SetValue("%TARVELIN_TEST_FOLDER%\\x 100% %TARVELIN_UNSET_VARIABLE%");
  EXPECT_EQ(StoredType(Key, "Plain"), ERegistryValueType::String);
  EXPECT_EQ(StoredType(Key, "Expandable"), ERegistryValueType::ExpandString);
  EXPECT_EQ(expandable.Value(), RegistryValue("/data\\x 100% %TARVELIN_UNSET_VARIABLE%"));
}

TEST(cRegistryValue, MissingValueGivesDefaultAndCreatesNothing) {
  const ScopedRegistryFolder registry;
  cRegistry missing = RegistryAt(Key, "Missing");
  missing.SetDefault(int32_t{7});
  EXPECT_EQ(missing.Value(), RegistryValue(int32_t{7}));
  EXPECT_EQ(missing.ValueEx(ERegistryClassKey::LocalMachine, Key, "Missing", ERegistryValueType::DWord, "d"),
            RegistryValue("d"));
  EXPECT_FALSE(missing.ValueExists());
  EXPECT_FALSE(missing.KeyExists());
  EXPECT_FALSE(std::filesystem::exists(registry.Folder()));
}

struct WrittenValue {
  const char* Case;
  ERegistryValueType Type;
  RegistryValue Written, Read;
};

class cRegistryValueKinds : public ::testing::TestWithParam<WrittenValue> {};

TEST_P(cRegistryValueKinds, ReadBackAsWritten) {
  const ScopedRegistryFolder registry;
  cRegistry value = RegistryAt(Key, "V", GetParam().Type);
  value.SetValue(GetParam().Written);
  EXPECT_EQ(value.Value(), GetParam().Read);
  EXPECT_EQ(StoredType(Key, "V"), GetParam().Type);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, cRegistryValueKinds,
    ::testing::Values(WrittenValue{"Text", ERegistryValueType::String, "t\xC3\xA9xt", "t\xC3\xA9xt"},
                      WrittenValue{"NumberAsText", ERegistryValueType::String, int32_t{-42}, "-42"},
                      WrittenValue{"Expandable", ERegistryValueType::ExpandString, "plain", "plain"},
                      WrittenValue{"Number", ERegistryValueType::DWord, int32_t{-1}, int32_t{-1}},
                      WrittenValue{"Bytes", ERegistryValueType::Binary, Bytes{0, 255, 10}, Bytes{0, 255, 10}},
                      WrittenValue{"NoBytes", ERegistryValueType::Binary, Bytes{}, Bytes{}}),
    [](const auto& Info) { return std::string(Info.param.Case); });

class cRegistryValueKindErrors : public ::testing::TestWithParam<WrittenValue> {};

TEST_P(cRegistryValueKindErrors, RaiseTheKindErrorAndStoreNothing) {
  const ScopedRegistryFolder registry;
  cRegistry value = RegistryAt(Key, "V", GetParam().Type);
  try {
    value.SetValue(GetParam().Written);
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), static_cast<int32_t>(0x800469A9u));
    EXPECT_EQ(error.Source(), "Tarvelin.cRegistry");
  }
  EXPECT_FALSE(value.ValueExists());
}

INSTANTIATE_TEST_SUITE_P(Kinds, cRegistryValueKindErrors,
                         ::testing::Values(WrittenValue{"TextAsNumber", ERegistryValueType::DWord, "1", {}},
                                           WrittenValue{"NumberAsBytes", ERegistryValueType::Binary, int32_t{1}, {}},
                                           WrittenValue{"BytesAsText", ERegistryValueType::String, Bytes{1}, {}},
                                           WrittenValue{"Empty", ERegistryValueType::String, std::monostate{}, {}},
                                           WrittenValue{"UnwritableType", ERegistryValueType::MultiString, "x", {}}),
                         [](const auto& Info) { return std::string(Info.param.Case); });

struct FailedOperation {
  const char* Case;
  bool HiveUnwritable;  // the hive folder's place is taken by a file
  std::function<void(cRegistry&)> Operation;
  std::string Message;
};

class cRegistryFailures : public ::testing::TestWithParam<FailedOperation> {};

TEST_P(cRegistryFailures, RaiseTheRegistryErrorWithItsMessage) {
  const ScopedRegistryFolder registry;
  RegistryAt("Software\\Present", "Kept").SetValue("x");
  if (GetParam().HiveUnwritable) {
    std::filesystem::remove_all(registry.Folder());
    testing::WriteBytes(registry.Folder(), "not a folder");
  }
  cRegistry failing = RegistryAt(Key, "V");
  try {
    GetParam().Operation(failing);
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Number(), 26001);
    EXPECT_EQ(error.Source(), "Tarvelin.cRegistry");
    EXPECT_EQ(error.Description(), GetParam().Message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Operations, cRegistryFailures,
    ::testing::Values(
        FailedOperation{"CreateKey", true, [](cRegistry& r) { r.CreateKey(); },
                        "Failed to create registry Key: 'Software\\Pelvora\\Test'"},
        FailedOperation{"DeleteMissingKey", false, [](cRegistry& r) { r.DeleteKey(); },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test'"},
        FailedOperation{"DeleteTheHive", false,
                        [](cRegistry& r) {
                          r.SetSectionKey("");
                          r.DeleteKey();
                        },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: ''"},
        FailedOperation{"DeleteValueOfMissingKey", false, [](cRegistry& r) { r.DeleteValue(); },
                        "Failed to open key 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test' for delete access"},
        FailedOperation{"DeleteMissingValue", false,
                        [](cRegistry& r) {
                          r.SetSectionKey("Software\\Present");
                          r.DeleteValue();
                        },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'Software\\Present',Key: 'V'"},
        FailedOperation{"SetValue", true, [](cRegistry& r) { r.SetValue("C:\\x"); },
                        "Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test',"
                        "Key: 'V' to value: 'C:\\x'"},
        FailedOperation{"OtherMachine", false,
                        [](cRegistry& r) {
                          r.SetMachine("server");
                          r.KeyExists();
                        },
                        "Failed to reach the registry of Machine: 'server': only this computer's registry is "
                        "available on this platform"}),
    [](const auto& Info) { return std::string(Info.param.Case); });

// A key with sub-keys is not deleted (as the platform's own deletion refuses it), so that removing a shared
// parent never takes other programs' keys along.
TEST(cRegistryKeys, DeleteKeyRefusesAKeyThatStillHasSubKeys) {
  const ScopedRegistryFolder registry;
  RegistryAt("Software\\Pelvora", "Vendor").SetValue("v");
  RegistryAt("Software\\Pelvora\\Other", "Setting").SetValue("s");
  cRegistry vendor = RegistryAt("Software\\Pelvora");
  EXPECT_THROW(vendor.DeleteKey(), TarvelinError);
  EXPECT_EQ(RegistryAt("Software\\Pelvora\\Other", "Setting").Value(), RegistryValue("s"));

  EXPECT_TRUE(RegistryAt("Software\\Pelvora\\Other").DeleteKey());
  EXPECT_TRUE(vendor.DeleteKey());
  EXPECT_FALSE(vendor.KeyExists());
  EXPECT_EQ(RegistryAt("Software").EnumerateSections(), std::vector<std::string>{});
}

TEST(cRegistryKeys, EnumeratesInTheOrderOfCreation) {
  const ScopedRegistryFolder registry;
  for (const char* name : {"Zeta", "alpha", "Mid"}) {
    RegistryAt(Key, name).SetValue(name);
    RegistryAt(std::string(Key) + "\\" + name).CreateKey();
  }
  RegistryAt(Key, "ALPHA").SetValue("replaced");
  EXPECT_EQ(RegistryAt(Key).EnumerateValues(), (std::vector<std::string>{"Zeta", "alpha", "Mid"}));
  EXPECT_EQ(RegistryAt(Key).EnumerateSections(), (std::vector<std::string>{"Zeta", "alpha", "Mid"}));
  cRegistry deleted = RegistryAt(Key, "zeta");
  EXPECT_TRUE(deleted.DeleteValue());
  EXPECT_EQ(RegistryAt(Key).EnumerateValues(), (std::vector<std::string>{"alpha", "Mid"}));
}

// Every key below SOFTWARE\Classes with its default value.
std::map<std::string, std::string> ClassesTree(const std::string& Section = "SOFTWARE\\Classes") {
  std::map<std::string, std::string> tree;
  for (const std::string& sub : RegistryAt(Section).EnumerateSections()) {
    const std::string path = Section + "\\" + sub;
    const RegistryValue value = RegistryAt(path).Value();
    tree[path.substr(17)] = std::holds_alternative<std::string>(value) ? std::get<std::string>(value) : "(none)";
    tree.merge(ClassesTree(path));
  }
  return tree;
}

TEST(cRegistryAssociation, RegistersEveryVerbAndTheIcon) {
  const ScopedRegistryFolder registry;
  cRegistry classes = RegistryAt("");
  classes.CreateEXEAssociation("  C:\\Program Files\\tarvelin.exe ", "Tarvelin.Topic", "Tarvelin Topic", "tvt", "",
                               true, "", true, "Ne&w topic", 0);
  classes.CreateAdditionalEXEAssociations({"edit", "&Edit", "notepad \"%1\""});
  const std::string program = "\"C:\\Program Files\\tarvelin.exe\"";
  EXPECT_EQ(ClassesTree(), (std::map<std::string, std::string>{
                               {".tvt", "Tarvelin.Topic"},
                               {"Tarvelin.Topic", "Tarvelin Topic"},
                               {"Tarvelin.Topic\\DefaultIcon", program + ",0"},
                               {"Tarvelin.Topic\\shell", "(none)"},
                               {"Tarvelin.Topic\\shell\\edit", "&Edit"},
                               {"Tarvelin.Topic\\shell\\edit\\command", "notepad \"%1\""},
                               {"Tarvelin.Topic\\shell\\new", "Ne&w topic"},
                               {"Tarvelin.Topic\\shell\\new\\command", program + " /n \"%1\""},
                               {"Tarvelin.Topic\\shell\\open", "&Open"},
                               {"Tarvelin.Topic\\shell\\open\\command", program + " \"%1\""},
                               {"Tarvelin.Topic\\shell\\print", "&Print"},
                               {"Tarvelin.Topic\\shell\\print\\command", program + " /p \"%1\""},
                           }));
  EXPECT_EQ(StoredType("SOFTWARE\\Classes\\Tarvelin.Topic\\shell\\open\\command", ""),
            ERegistryValueType::ExpandString);
}

class cRegistryAssociationPath : public ::testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(cRegistryAssociationPath, IsQuotedOnce) {
  const ScopedRegistryFolder registry;
  RegistryAt("").CreateEXEAssociation(GetParam().first, "T.File", "T file", "t");
  EXPECT_EQ(ClassesTree(), (std::map<std::string, std::string>{{".t", "T.File"},
                                                               {"T.File", "T file"},
                                                               {"T.File\\shell", "(none)"},
                                                               {"T.File\\shell\\open", "&Open"},
                                                               {"T.File\\shell\\open\\command", GetParam().second}}));
}

INSTANTIATE_TEST_SUITE_P(Paths, cRegistryAssociationPath,
                         ::testing::Values(std::pair("C:\\t.exe", "\"C:\\t.exe\" \"%1\""),
                                           std::pair(" \"C:\\a b\\t.exe\" ", "\"C:\\a b\\t.exe\" \"%1\""),
                                           std::pair("\"C:\\t.exe", "\"C:\\t.exe\" \"%1\""),
                                           std::pair("C:\\t.exe\"", "\"C:\\t.exe\" \"%1\"")));

TEST(cRegistryAssociation, AdditionalVerbsNeedARegisteredClassAndWholeTriples) {
  const ScopedRegistryFolder registry;
  cRegistry classes = RegistryAt("");
  try {
    classes.CreateAdditionalEXEAssociations({"edit", "&Edit", "x"});
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Description(), "Error - attempt to create additional associations before class defined.");
  }
  classes.CreateEXEAssociation("t.exe", "T.File", "T file", "t");
  try {
    classes.CreateAdditionalEXEAssociations({"edit", "&Edit"});
    FAIL() << "no error raised";
  } catch (const TarvelinError& error) {
    EXPECT_EQ(error.Description(),
              "Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command");
  }
  EXPECT_FALSE(RegistryAt("SOFTWARE\\Classes\\T.File\\shell\\edit").KeyExists());
}

}  // namespace
}  // namespace tarvelin
