#include <gtest/gtest.h>

#include "startup/cRegistryHive.h"

namespace tarvelin {
namespace {

constexpr const char* Root = "HKEY_CURRENT_USER";
constexpr const char* Header = "Windows Registry Editor Version 5.00\r\n";
constexpr const char* SettingsLine = "[HKEY_CURRENT_USER\\Software\\Pelvora\\Tarvelin]\r\n";

std::string Repeated(std::string_view Text, size_t Count) {
  std::string text;
  for (size_t copy = 0; copy < Count; ++copy) {
    text += Text;
  }
  return text;
}

RegistryData Text(std::string_view Value, ERegistryValueType Type = ERegistryValueType::String) {
  return RegistryDataFromText(Value, Type);
}

// Every kind of value the program stores, with texts that need escapes, hex and more than one line.
cRegistryHive SampleHive() {
  cRegistryHive hive(Root);
  const std::string key = "Software\\Pelvora\\Tarvelin";
  hive.SetValue(key, "LastUsedDir", Text("C:\\Users\\me \"quoted\""));
  hive.SetValue(key, "ShowSettingsOnNew", RegistryDataFromNumber(0xFFFFFFFF));
  hive.SetValue(key, "WindowLeft", RegistryDataFromNumber(9900));
  hive.SetValue(key, "Pattern", Text("%HOME%\\x", ERegistryValueType::ExpandString));
  hive.SetValue(key, "Lines", Text("two\r\nlines, \xC3\xBCnicode \xF0\x9F\x98\x80"));
  hive.SetValue("Software\\Classes\\.tvt", "", Text("Tarvelin.Topic"));
  return hive;
}

TEST(cRegistryHiveFormat, WritesTheRegFileLayout) {
  cRegistryHive hive(Root);
  hive.SetValue("Software\\Pelvora\\Tarvelin", "LastUsedDir", Text("C:\\Users\\me"));
  hive.SetValue("Software\\Pelvora\\Tarvelin", "ShowSettingsOnNew", RegistryDataFromNumber(0xFFFFFFFF));
  hive.SetValue("Software\\Pelvora\\Tarvelin", "", Text("%1", ERegistryValueType::ExpandString));
  EXPECT_EQ(hive.Serialise(), std::string(Header) +
                                  "\r\n[HKEY_CURRENT_USER\\Software]\r\n"
                                  "\r\n[HKEY_CURRENT_USER\\Software\\Pelvora]\r\n"
                                  "\r\n" +
                                  SettingsLine +
                                  "\"LastUsedDir\"=\"C:\\\\Users\\\\me\"\r\n"
                                  "\"ShowSettingsOnNew\"=dword:ffffffff\r\n"
                                  "@=hex(2):25,00,31,00,00,00\r\n");
}

TEST(cRegistryHiveFormat, ParsingTheWrittenTextGivesTheSameHive) {
  const cRegistryHive hive = SampleHive();
  const auto parsed = cRegistryHive::Parse(hive.Serialise(), Root);
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->Serialise(), hive.Serialise());
  EXPECT_EQ(parsed->Value("software\\PELVORA\\tarvelin", "lines"),
            Text("two\r\nlines, \xC3\xBCnicode \xF0\x9F\x98\x80"));
  EXPECT_EQ(parsed->ValueNames("Software\\Pelvora\\Tarvelin"),
            (std::vector<std::string>{"LastUsedDir", "ShowSettingsOnNew", "WindowLeft", "Pattern", "Lines"}));
  EXPECT_EQ(parsed->SubKeyNames("Software"), (std::vector<std::string>{"Pelvora", "Classes"}));
}

TEST(cRegistryHiveFormat, ReadsHandWrittenAndEditorFiles) {
  const auto hive = cRegistryHive::Parse(
      "\r\nREGEDIT4\n"
      "; written by hand\n"
      "[hkey_current_user\\Software\\Pelvora\\Tarvelin\\]\n"
      "  \"LastUsedDir\" = \"C:\\Data\\x\"\n"
      "\"AppMaximized\"=DWORD:00000001\n"
      "\"Pattern\"=hex(2):25,00,41,00,25,00,\\\n"
      "  00,00\n"
      "\"lastUsedDir\"=\"D:\\y\"\n"
      "[HKEY_CURRENT_USER\\Software\\Pelvora\\Tarvelin]\n"
      "\"appmaximized\"=dword:00000002\n",
      Root);
  ASSERT_TRUE(hive);
  const std::string key = "Software\\Pelvora\\Tarvelin";
  // A name given again replaces the value where it first stood.
  EXPECT_EQ(hive->ValueNames(key), (std::vector<std::string>{"LastUsedDir", "AppMaximized", "Pattern"}));
  EXPECT_EQ(hive->Value(key, "LastUsedDir"), Text("D:\\y"));
  EXPECT_EQ(hive->Value(key, "AppMaximized"), RegistryDataFromNumber(2));
  EXPECT_EQ(hive->Value(key, "Pattern"), Text("%A%", ERegistryValueType::ExpandString));
}

class cRegistryHiveDamage : public ::testing::TestWithParam<std::string> {};

TEST_P(cRegistryHiveDamage, ReadsAsNothing) {
  EXPECT_FALSE(cRegistryHive::Parse(GetParam(), Root));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, cRegistryHiveDamage,
    ::testing::Values("Windows Registry Editor Version 4.00\r\n",                         // unknown header
                      std::string(Header) + "\"A\"=\"x\"\r\n",                            // value outside a key
                      std::string(Header) + "[HKEY_LOCAL_MACHINE\\Software]\r\n",         // another hive
                      std::string(Header) + "[HKEY_CURRENT_USER\\Software\\\\X]\r\n",     // empty key name
                      std::string(Header) + SettingsLine + "\"A\"=dword:00000001 x\r\n",  // junk behind it
                      std::string(Header) + SettingsLine + "\"A\"=hex:1,2\r\n",           // half bytes
                      std::string(Header) + SettingsLine + "\"A\"=hex:01,\\\r\n",         // continued at the end
                      std::string(Header) + SettingsLine + "\"A\"=-\r\n",                 // deletion syntax
                      std::string(Header) + SettingsLine + "\"A\"=\"x\" y\r\n",           // junk behind a text
                      std::string(Header) + SettingsLine + "A=\"x\"\r\n",                 // unquoted name
                      std::string(Header) + "[HKEY_CURRENT_USER" + Repeated("\\k", 513) + "]\r\n"));  // too deep

// A file cut anywhere inside a line (as a crash or a full disk leaves it) must be noticed, so that the
// settings fall back to their defaults instead of taking a shortened value. Binary lists are left out: a
// list cut at a comma cannot be told from a shorter list.
TEST(cRegistryHiveDamage, EveryCutInsideALineIsNoticed) {
  const std::string text = SampleHive().Serialise();
  for (size_t cut = 1; cut < text.size(); ++cut) {
    const bool insideLine = text[cut - 1] != '\n' && text[cut] != '\r' && text[cut] != '\n';
    if (insideLine) {
      EXPECT_FALSE(cRegistryHive::Parse(text.substr(0, cut), Root)) << "cut after: " << text.substr(0, cut);
    }
  }
}

}  // namespace
}  // namespace tarvelin
