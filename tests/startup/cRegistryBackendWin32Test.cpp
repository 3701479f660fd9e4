#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "startup/cRegistryBackendWin32.h"

namespace tarvelin {
namespace {

// The platform's registry itself, in a scratch key of the current user's that only this test uses and
// that is removed with everything below it at the end.
class cRegistryBackendWin32Test : public ::testing::Test {
 protected:
  cRegistryBackendWin32Test()
      : scratch_("Software\\TarvelinScratch-" + std::to_string(GetCurrentProcessId())),
        backend_(Win32RegistryBackend()) {}
  ~cRegistryBackendWin32Test() override {
    const std::wstring scratch(scratch_.begin(), scratch_.end());
    RegDeleteTreeW(HKEY_CURRENT_USER, scratch.c_str());
  }

  RegistryKeyPath Key(const std::string& Below = {}) const {
    return {"", ERegistryClassKey::CurrentUser, Below.empty() ? scratch_ : scratch_ + "\\" + Below};
  }

  std::string scratch_;
  std::shared_ptr<cRegistryBackend> backend_;
};

TEST_F(cRegistryBackendWin32Test, SubKeysComeSortedAndAKeyWithSubKeysIsNotDeleted) {
  for (const char* name : {"b", "C", "a"}) {
    ASSERT_TRUE(backend_->CreateKey(Key(std::string(name) + "\\leaf")));
  }
  EXPECT_EQ(backend_->EnumerateSections(Key()), (std::vector<std::string>{"a", "b", "C"}));
  EXPECT_FALSE(backend_->DeleteKey(Key("a")));
  EXPECT_TRUE(backend_->KeyExists(Key("a\\leaf")));
  EXPECT_TRUE(backend_->DeleteKey(Key("a\\leaf")));
  EXPECT_TRUE(backend_->DeleteKey(Key("a")));
  EXPECT_FALSE(backend_->KeyExists(Key("a")));
}

// Values come back with their type and bytes as stored: an expandable string is not expanded, binary
// bytes keep their zeros, and a name outside ASCII survives.
TEST_F(cRegistryBackendWin32Test, ValuesKeepTheirTypeAndBytes) {
  const RegistryData expandable = RegistryDataFromText("%SystemRoot%\\x", ERegistryValueType::ExpandString);
  const RegistryData binary{ERegistryValueType::Binary, std::string("\0\x01\xFF\0", 4)};
  ASSERT_TRUE(backend_->SetValue(Key(), "Path", expandable));
  ASSERT_TRUE(backend_->SetValue(Key(), "Bytes", binary));
  ASSERT_TRUE(backend_->SetValue(Key(), "Caf\xC3\xA9", RegistryDataFromNumber(7)));
  EXPECT_EQ(backend_->QueryValue(Key(), "Path"), expandable);
  EXPECT_EQ(backend_->QueryValue(Key(), "Bytes"), binary);
  EXPECT_EQ(backend_->QueryValue(Key(), "Caf\xC3\xA9"), RegistryDataFromNumber(7));
  EXPECT_EQ(backend_->DeleteValue(Key(), "Bytes"), RegistryDeleteResult::Deleted);
  EXPECT_EQ(backend_->DeleteValue(Key(), "Bytes"), RegistryDeleteResult::ValueNotDeleted);
  EXPECT_EQ(backend_->DeleteValue(Key("none"), "Bytes"), RegistryDeleteResult::KeyNotOpened);
  EXPECT_EQ(backend_->EnumerateValues(Key()).size(), 2u);
}

TEST_F(cRegistryBackendWin32Test, AnUnreachableMachineFailsEveryOperation) {
  RegistryKeyPath remote = Key();
  remote.Machine = "\\\\tarvelin-no-such-machine";
  EXPECT_TRUE(backend_->SupportsRemoteMachines());
  EXPECT_FALSE(backend_->CreateKey(remote));
  EXPECT_FALSE(backend_->KeyExists(remote));
  EXPECT_FALSE(backend_->SetValue(remote, "x", RegistryDataFromNumber(1)));
  EXPECT_EQ(backend_->QueryValue(remote, "x"), std::nullopt);
  EXPECT_TRUE(backend_->EnumerateSections(remote).empty());
}

}  // namespace
}  // namespace tarvelin
