#include <QApplication>
#include <QTest>
#include <cstdio>

#include "gui_support/GuiTestRegistry.h"

namespace tarvelin::testing {

std::map<std::string, GuiTestFactory>& GuiTests() {
  static std::map<std::string, GuiTestFactory> tests;
  return tests;
}

GuiTestRegistrar::GuiTestRegistrar(const char* Name, GuiTestFactory Factory) {
  GuiTests().emplace(Name, std::move(Factory));
}

}  // namespace tarvelin::testing

// Usage: tarvelin_gui_tests [TestClass [Qt Test arguments...]]; without a class every class runs.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const auto& tests = tarvelin::testing::GuiTests();
  if (argc >= 2 && argv[1][0] != '-') {
    const auto found = tests.find(argv[1]);
    if (found == tests.end()) {
      std::fprintf(stderr, "No test class named %s\n", argv[1]);
      return 2;
    }
    auto test = found->second();
    argv[1] = argv[0];
    return QTest::qExec(test.get(), argc - 1, argv + 1);
  }
  int failures = 0;
  for (const auto& [name, factory] : tests) {
    auto test = factory();
    failures += QTest::qExec(test.get(), argc, argv);
  }
  return failures == 0 ? 0 : 1;
}
