#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace tarvelin::testing {

// Every Qt Test class registers itself under the name of its file, so that the one test program can run
// each class as its own CTest test.
using GuiTestFactory = std::function<std::unique_ptr<QObject>()>;
std::map<std::string, GuiTestFactory>& GuiTests();

struct GuiTestRegistrar {
  GuiTestRegistrar(const char* Name, GuiTestFactory Factory);
};

}  // namespace tarvelin::testing

// Registers a QObject test class under its own name (which must match its file name).
#define TARVELIN_GUI_TEST(Class)                                       \
  static const ::tarvelin::testing::GuiTestRegistrar Class##Registrar( \
      #Class, [] { return std::unique_ptr<QObject>(std::make_unique<Class>().release()); })
