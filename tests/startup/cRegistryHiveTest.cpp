#include <gtest/gtest.h>

#include "startup/cRegistryHive.h"

namespace tarvelin {
namespace {

constexpr const char* Root = "HKEY_CURRENT_USER";
constexpr const char* Header = "Windows Registry Editor Version 5.00\r\n";
constexpr const char* SettingsLine = "[HKEY_CURRENT_USER\\Software\\Pelvora\\Tarvelin]\r\n";

RegistryData Text(std::string_view Value, ERegistryValueType Type = ERegistryValueType::String) {
  return RegistryDataFromText(Value, Type);
}

// Every kind of value the program stores, with texts that need escapes, hex and more than one line.
cRegistryHive SampleHive() {
  cRegistryHive hive(Root);
  const std::string key = "Software\\Pelvora\\Tarvelin";
  hive.SetValue(key, "LastUsedDir", Text("C:\\Users\\me \"quoted\""));
  hive.SetValue(key, "ShowSettingsOnNew", RegistryDataFromNumber(0xFFFFFFFF));
  hive.SetValue(key, "", Text("%1", ERegistryValueType::ExpandString));
  hive.SetValue(key, "Lines", Text("two\r\nlines, \xC3\xBCnicode \xF0\x9F\x98\x80"));
  hive.SetValue("Software\\Classes\\.tvt", "", Text("Tarvelin.Topic"));
  return hive;
}

TEST(cRegistryHiveFormat, WritesTheRegFileLayoutAndReadsItBack) {
  const cRegistryHive hive = SampleHive();
  const std::string text = hive.Serialise();
  const std::string layout = std::string(Header) +
                             "\r\n[HKEY_CURRENT_USER\\Software]\r\n"
                             "\r\n[HKEY_CURRENT_USER\\Software\\Pelvora]\r\n"
                             "\r\n" +
                             SettingsLine +
                             "\"LastUsedDir\"=\"C:\\\\Users\\\\me \\\"quoted\\\"\"\r\n"
                             "\"ShowSettingsOnNew\"=dword:ffffffff\r\n"
                             "@=hex(2):25,00,31,00,00,00\r\n"
                             "\"Lines\"=hex(1):74,00,";
  EXPECT_EQ(text.substr(0, layout.size()), layout);
  EXPECT_TRUE(text.ends_with("[HKEY_CURRENT_USER\\Software\\Classes\\.tvt]\r\n@=\"Tarvelin.Topic\"\r\n")) << text;
  const auto parsed = cRegistryHive::Parse(text, Root);
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->Serialise(), text);
  EXPECT_EQ(parsed->Value("software\\PELVORA\\tarvelin", "lines"),
            Text("two\r\nlines, \xC3\xBCnicode \xF0\x9F\x98\x80"));
  EXPECT_EQ(parsed->ValueNames("Software\\Pelvora\\Tarvelin"),
            (std::vector<std::string>{"LastUsedDir", "ShowSettingsOnNew", "", "Lines"}));
  EXPECT_EQ(parsed->SubKeyNames("Software"), (std::vector<std::string>{"Pelvora", "Classes"}));
  cRegistryHive binary(Root);
  binary.SetValue("", "B", {ERegistryValueType::Binary, std::string("\0\xFF", 2)});
  EXPECT_EQ(binary.Serialise(), std::string(Header) + "\r\n[HKEY_CURRENT_USER]\r\n\"B\"=hex:00,ff\r\n");
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

// One level deeper than the registry allows.
std::string TooDeep() {
  std::string key = std::string(Header) + "[HKEY_CURRENT_USER";
  for (int level = 0; level < 513; ++level) {
    key += "\\k";
  }
  return key + "]\r\n";
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
                      TooDeep()));                                                        // too deep

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
