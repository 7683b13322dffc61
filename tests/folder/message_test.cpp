#include "folder/message.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumisk {
namespace {

TEST(FolderMessage, PutsTheArgumentInPlaceOfConversions) {
  struct Row {
    const char* text;
    const char* argument;
    const char* message;
  };
  const std::vector<Row> rows = {
      {"%lld items", "12", "12 items"},
      {"%ld items", "12", "12 items"},
      {"%d items", "12", "12 items"},
      {"항목 %lld개", "12", "항목 12개"},
      {"Modified: %s", "today", "Modified: today"},
      {"%1$s changed", "today", "today changed"},
      {"%1$lld", "12", "12"},
      {"%s and %s", "a", "a and a"},
      {"100%% of %lld", "12", "100% of 12"},
      {"%%s", "12", "%s"},
      {"folder.items", "12", "folder.items"},
      {"", "12", ""},
      {"%", "12", "%"},
      {"%n %p %x %2$s", "12", "%n %p %x %2$s"},
      {"%l", "12", "%l"},
      {"%1$", "12", "%1$"},
      {"%s", "%s %lld %%", "%s %lld %%"},
      {"%s", "", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(formatMessage(row.text, row.argument), row.message) << row.text;
  }
}

}  // namespace
}  // namespace lumisk
