#pragma once

#include <QTest>

namespace tarvelin::testing {

// Adds one row of a data-driven Qt test in a single call, so that a table reads one case per line.
template <typename... Values>
void AddRow(const char* Name, const Values&... Row) {
  (QTest::newRow(Name) << ... << Row);
}

}  // namespace tarvelin::testing
