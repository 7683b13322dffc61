#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>

extern "C" int _nl_msg_cat_cntr;  // the C library's manual has programs count this up themselves

namespace lumisk::test {

/// Sets an environment variable, or removes it, for as long as this lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* former = getenv(name)) former_ = former;
    set(value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { set(former_ ? former_->c_str() : nullptr); }

 private:
  void set(const char* value) const {
    if (value != nullptr) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
    ++_nl_msg_cat_cntr;  // message look-ups forget what they found for another LANGUAGE
  }

  const char* name_;
  std::optional<std::string> former_;
};

/// Tests of this fixture have the locales that the build made: de_DE, en_US, ja_JP, sv_SE, tr_TR,
/// each in UTF-8. They are skipped where the machine cannot make any.
class WithLocales : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(LUMISK_TEST_LOCALES "/de_DE.UTF-8")) {
      GTEST_SKIP() << "no localedef or no locale sources (package locales)";
    }
  }

 private:
  ScopedVariable locpath_{"LOCPATH", LUMISK_TEST_LOCALES};
  ScopedVariable language_{"LANGUAGE", nullptr};
};

}  // namespace lumisk::test
