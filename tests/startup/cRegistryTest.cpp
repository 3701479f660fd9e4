#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>

#include "startup/RegistryTestFolder.h"
#include "startup/cRegistry.h"
#include "startup/cRegistryBackendHive.h"
#include "support/RaisedErrors.h"

namespace tarvelin {
namespace {

using testing::ErrorOf;
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

// A missing value gives the default and creates nothing; text holding "%" is stored expandable and read
// expanded, leaving alone what is no variable.
TEST(cRegistryValue, MissingGivesTheDefaultAndPercentTextIsExpanded) {
  const ScopedRegistryFolder registry;
  const testing::ScopedEnvironment variable("TARVELIN_TEST_FOLDER", "/data");
  cRegistry value = RegistryAt(Key, "Expandable");
  value.SetDefault(int32_t{7});
  EXPECT_EQ(value.Value(), RegistryValue(int32_t{7}));
  EXPECT_FALSE(value.ValueExists() || value.KeyExists() || std::filesystem::exists(registry.Folder()));
  RegistryAt(Key, "Plain").SetValue("C:\\Users");
  value.SetValue("%TARVELIN_TEST_FOLDER%\\x 100% %TARVELIN_UNSET_VARIABLE%");
  EXPECT_EQ(StoredType(Key, "Plain"), ERegistryValueType::String);
  EXPECT_EQ(StoredType(Key, "Expandable"), ERegistryValueType::ExpandString);
  EXPECT_EQ(value.Value(), RegistryValue("/data\\x 100% %TARVELIN_UNSET_VARIABLE%"));
}

struct WrittenValue {
  const char* Case;
  ERegistryValueType Type;
  RegistryValue Written;
  std::optional<RegistryValue> Read;  // nullopt: the kind does not fit the type, and nothing is stored
};

class cRegistryValueKinds : public ::testing::TestWithParam<WrittenValue> {};

TEST_P(cRegistryValueKinds, ReadBackAsWrittenOrRaiseTheKindError) {
  const ScopedRegistryFolder registry;
  cRegistry value = RegistryAt(Key, "V", GetParam().Type);
  const std::string raised = ErrorOf([&] { value.SetValue(GetParam().Written); });
  const std::string kindError = std::to_string(static_cast<int32_t>(0x800469A9u)) + " [Tarvelin.cRegistry]";
  EXPECT_EQ(raised.rfind(kindError, 0) == 0, !GetParam().Read) << raised;
  if (!GetParam().Read) {
    EXPECT_FALSE(value.ValueExists());
    return;
  }
  EXPECT_EQ(value.Value(), *GetParam().Read);
  EXPECT_EQ(StoredType(Key, "V"), GetParam().Type);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, cRegistryValueKinds,
    ::testing::Values(WrittenValue{"Text", ERegistryValueType::String, "t\xC3\xA9xt", "t\xC3\xA9xt"},
                      WrittenValue{"NumberAsText", ERegistryValueType::String, int32_t{-42}, "-42"},
                      WrittenValue{"Expandable", ERegistryValueType::ExpandString, "plain", "plain"},
                      WrittenValue{"Number", ERegistryValueType::DWord, int32_t{-1}, int32_t{-1}},
                      WrittenValue{"Bytes", ERegistryValueType::Binary, Bytes{0, 255, 10}, Bytes{0, 255, 10}},
                      WrittenValue{"NoBytes", ERegistryValueType::Binary, Bytes{}, Bytes{}},
                      WrittenValue{"TextAsNumber", ERegistryValueType::DWord, "1", std::nullopt},
                      WrittenValue{"NumberAsBytes", ERegistryValueType::Binary, int32_t{1}, std::nullopt},
                      WrittenValue{"BytesAsText", ERegistryValueType::String, Bytes{1}, std::nullopt},
                      WrittenValue{"Empty", ERegistryValueType::String, std::monostate{}, std::nullopt},
                      WrittenValue{"UnwritableType", ERegistryValueType::MultiString, "x", std::nullopt}),
    [](const auto& Info) { return std::string(Info.param.Case); });

struct FailedOperation {
  const char* Case;
  bool HiveUnwritable;  // the hive folder's place is taken by a file
  std::string Section;
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
  cRegistry failing = RegistryAt(GetParam().Section, "V");
  EXPECT_EQ(ErrorOf([&] { GetParam().Operation(failing); }), "26001 [Tarvelin.cRegistry] " + GetParam().Message);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, cRegistryFailures,
    ::testing::Values(
        FailedOperation{"CreateKey", true, Key, [](cRegistry& r) { r.CreateKey(); },
                        "Failed to create registry Key: 'Software\\Pelvora\\Test'"},
        FailedOperation{"DeleteMissingKey", false, Key, [](cRegistry& r) { r.DeleteKey(); },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test'"},
        FailedOperation{"DeleteTheHive", false, "", [](cRegistry& r) { r.DeleteKey(); },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: ''"},
        FailedOperation{"DeleteValueOfMissingKey", false, Key, [](cRegistry& r) { r.DeleteValue(); },
                        "Failed to open key 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test' for delete access"},
        FailedOperation{"DeleteMissingValue", false, "Software\\Present", [](cRegistry& r) { r.DeleteValue(); },
                        "Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'Software\\Present',Key: 'V'"},
        FailedOperation{"SetValue", true, Key, [](cRegistry& r) { r.SetValue("C:\\x"); },
                        "Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: 'Software\\Pelvora\\Test',"
                        "Key: 'V' to value: 'C:\\x'"},
        FailedOperation{"OtherMachine", false, Key,
                        [](cRegistry& r) {
                          r.SetMachine("server");
                          r.KeyExists();
                        },
                        "Failed to reach the registry of Machine: 'server': only this computer's registry is "
                        "available on this platform"}),
    [](const auto& Info) { return std::string(Info.param.Case); });

std::string DefaultValueOf(const std::string& Section) {
  const RegistryValue value = RegistryAt("SOFTWARE\\Classes\\" + Section).Value();
  return std::holds_alternative<std::string>(value) ? std::get<std::string>(value) : "(none)";
}

TEST(cRegistryAssociation, RegistersEveryVerbAndTheIconWithTheProgramQuotedOnce) {
  const ScopedRegistryFolder registry;
  cRegistry classes = RegistryAt("");
  EXPECT_EQ(ErrorOf([&] {
              classes.CreateAdditionalEXEAssociations({"edit", "&Edit", "x"});
            }),
            "5 [Tarvelin.cRegistry] Error - attempt to create additional associations before class defined.");
  classes.CreateEXEAssociation("  C:\\Program Files\\tarvelin.exe ", "Tarvelin.Topic", "Tarvelin Topic", "tvt", "",
                               true, "", true, "Ne&w topic", 0);
  classes.CreateAdditionalEXEAssociations({"edit", "&Edit", "notepad \"%1\""});
  EXPECT_NE(ErrorOf([&] { classes.CreateAdditionalEXEAssociations({"view", "&View"}); }), "none");
  const std::string program = "\"C:\\Program Files\\tarvelin.exe\"";
  std::vector<std::string> defaults;
  for (const char* section :
       {".tvt", "Tarvelin.Topic", "Tarvelin.Topic\\DefaultIcon", "Tarvelin.Topic\\shell\\edit",
        "Tarvelin.Topic\\shell\\edit\\command", "Tarvelin.Topic\\shell\\new\\command", "Tarvelin.Topic\\shell\\open",
        "Tarvelin.Topic\\shell\\open\\command", "Tarvelin.Topic\\shell\\print\\command"}) {
    defaults.push_back(DefaultValueOf(section));
  }
  EXPECT_EQ(defaults,
            (std::vector<std::string>{"Tarvelin.Topic", "Tarvelin Topic", program + ",0", "&Edit", "notepad \"%1\"",
                                      program + " /n \"%1\"", "&Open", program + " \"%1\"", program + " /p \"%1\""}));
  EXPECT_EQ(RegistryAt("SOFTWARE\\Classes\\Tarvelin.Topic\\shell").EnumerateSections(),
            (std::vector<std::string>{"open", "print", "new", "edit"}));
  EXPECT_FALSE(RegistryAt("SOFTWARE\\Classes\\Tarvelin.Topic\\shell\\view").KeyExists());
  EXPECT_EQ(StoredType("SOFTWARE\\Classes\\Tarvelin.Topic\\shell\\open\\command", ""),
            ERegistryValueType::ExpandString);
  for (const char* path : {" \"C:\\a b\\t.exe\" ", "\"C:\\a b\\t.exe", "C:\\a b\\t.exe\""}) {
    classes.CreateEXEAssociation(path, "T.File", "T file", "t");
    EXPECT_EQ(DefaultValueOf("T.File\\shell\\open\\command"), "\"C:\\a b\\t.exe\" \"%1\"") << path;
  }
}

}  // namespace
}  // namespace tarvelin
