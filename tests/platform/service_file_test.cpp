#include "platform/service_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cerrno>
#include <filesystem>

#include "platform/atomic_file.h"
#include "platform/data_directories.h"
#include "support/files.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;
using State = ServiceFile::State;
using test::TemporaryFolder;
using test::writeAll;

TEST(ServiceFile, WhatIsWrittenIsReadBack) {
  const TemporaryFolder folder;
  for (const std::string program :
       {"/usr/libexec/lumisk-previewer", "/a b/lumisk-previewer", "/it's/lumisk-previewer",
        "/\"$HOME`\\/lumisk-previewer", "/é/lumisk-previewer", "/#;%/lumisk-previewer"}) {
    const auto text = serviceFileText("org.nemo.Preview", program);
    ASSERT_TRUE(text);
    writeAll(folder / "x", *text);
    const ServiceFile file = readServiceFile(folder / "x");
    EXPECT_EQ(file.state, State::Ours);
    EXPECT_EQ(file.program, program);
    EXPECT_TRUE(file.startsLumisk());
  }
}

TEST(ServiceFile, ControlCharactersAndBytesThatAreNoTextCannotBeWritten) {
  for (char c = 0; c < 0x20; ++c) {
    EXPECT_FALSE(serviceFileText("x", std::string("/a") + c + "b")) << static_cast<int>(c);
  }
  EXPECT_FALSE(serviceFileText("x", "/\x7F"));
  EXPECT_FALSE(serviceFileText("x", "/\xFF"));
}

TEST(ServiceFile, ProgramsOfForeignFiles) {
  struct Row {
    const char* text;
    const char* program;
  };
  const Row rows[] = {
      {"[D-BUS Service]\nName=x\nExec=/usr/bin/x\n", "/usr/bin/x"},
      {"[D-BUS Service]\nExec=/usr/bin/x --option", "/usr/bin/x"},
      {"Exec=\"/a b\" c", "/a b"},
      {"Exec=/a\\ b c", "/a b"},
      {"Exec=/a'b c'\"d\" e", "/ab cd"},
      {"Exec='/never closed", "/never closed"},
      {"Exec=\\", "\\"},
      {"Exec=", ""},
      {"", ""},
      {"\n\n", ""},
      {"#Exec=/a", ""},
  };
  const TemporaryFolder folder;
  for (const Row& row : rows) {
    writeAll(folder / "x", row.text);
    const ServiceFile file = readServiceFile(folder / "x");
    EXPECT_EQ(file.state, State::Foreign);
    EXPECT_EQ(file.program, row.program) << row.text;
  }
}

TEST(ServiceFile, OnlyARegularFileWithTheMarkIsOurs) {
  const TemporaryFolder folder;
  writeAll(folder / "ours", *serviceFileText("x", "/a/lumisk-previewer"));
  fs::create_symlink(folder / "ours", folder / "link");
  fs::create_symlink("/nowhere", folder / "dangling");
  fs::create_directory(folder / "folder");
  writeAll(folder / "long", *serviceFileText("x", "/a") + std::string(70'000, '\n'));
  EXPECT_EQ(readServiceFile(folder / "ours").state, State::Ours);
  EXPECT_EQ(readServiceFile(folder / "link").state, State::Foreign);
  EXPECT_TRUE(readServiceFile(folder / "link").startsLumisk());
  EXPECT_EQ(readServiceFile(folder / "dangling").state, State::Foreign);
  EXPECT_EQ(readServiceFile(folder / "folder").state, State::Foreign);
  EXPECT_EQ(readServiceFile(folder / "long").state, State::Foreign);
  EXPECT_EQ(readServiceFile(folder / "nowhere").state, State::Absent);
  EXPECT_EQ(readServiceFile(folder / "ours/nowhere").state, State::Absent);
}

TEST(AtomicFile, ReplacesALinkAndLeavesWhatItLedTo) {
  const TemporaryFolder folder;
  writeAll(folder / "target", "old");
  fs::create_symlink(folder / "target", folder / "link");
  EXPECT_EQ(writeFileAtomically(folder / "link", "new"), 0);
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(test::readAll(folder / "link"), "new");
  EXPECT_EQ(test::readAll(folder / "target"), "old");
}

TEST(AtomicFile, FailureLeavesNothingBehind) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "there");
  writeAll(folder / "there/file", "x");
  EXPECT_EQ(writeFileAtomically(folder / "there", "new"), EISDIR);
  EXPECT_EQ(writeFileAtomically(folder / "nowhere/file", "new"), ENOENT);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

/// Sets variables for one test.
class DataDirectories : public testing::Test {
 protected:
  static void set(const char* home, const char* dataHome, const char* dataDirectories) {
    const auto put = [](const char* name, const char* value) {
      if (value != nullptr) {
        setenv(name, value, 1);
      } else {
        unsetenv(name);
      }
    };
    put("HOME", home);
    put("XDG_DATA_HOME", dataHome);
    put("XDG_DATA_DIRS", dataDirectories);
    put("XDG_RUNTIME_DIR", nullptr);
  }
};

TEST_F(DataDirectories, FollowTheEnvironment) {
  struct Row {
    const char* home;
    const char* dataHome;
    const char* directories;
    std::vector<std::string> expected;
  };
  const Row rows[] = {
      {"/h", nullptr, nullptr, {"/h/.local/share", "/usr/local/share", "/usr/share"}},
      {"/h", "/d", "", {"/d", "/usr/local/share", "/usr/share"}},
      {"/h", "d", "/x", {"/h/.local/share", "/x"}},
      {"/h", "", "/x:y::/z:", {"/h/.local/share", "/x", "/z"}},
      {nullptr, nullptr, "/x", {"/x"}},
      {"h", "./d", ":", {}},
      {nullptr, "/d", "/x", {"/d", "/x"}},
  };
  for (const Row& row : rows) {
    set(row.home, row.dataHome, row.directories);
    EXPECT_EQ(dataDirectories(), row.expected);
  }
}

// Read off dbus-daemon(1), and off a bus that was asked with such an environment.
TEST_F(DataDirectories, ServiceFilesAreLookedForWhereTheBusLooks) {
  struct Row {
    const char* session;
    const char* directories;
    std::vector<std::string> expected;
  };
  const Row rows[] = {
      {nullptr, nullptr, {"/d", "/usr/local/share", "/usr/share"}},
      {"/run/user/1", nullptr, {"/run/user/1", "/d", "/usr/local/share", "/usr/share"}},
      {"run", "/x", {"/d", "/x", "/usr/share"}},
      {"", "/usr/share:/x", {"/d", "/usr/share", "/x"}},
  };
  for (const Row& row : rows) {
    set("/h", "/d", row.directories);
    if (row.session != nullptr) setenv("XDG_RUNTIME_DIR", row.session, 1);
    EXPECT_EQ(serviceDataDirectories(), row.expected);
  }
}

TEST_F(DataDirectories, AFileForThisSessionAloneTakesTheNameOver) {
  const TemporaryFolder folder;
  const std::string session = folder / "session";
  const std::string own = folder / "own";
  set(nullptr, own.c_str(), "/nowhere");
  setenv("XDG_RUNTIME_DIR", session.c_str(), 1);
  const std::string name = "org.lumisk.Test";
  for (const auto& [directory, program] :
       {std::pair(own, "/opt/other"), std::pair(session, "/usr/libexec/lumisk-previewer")}) {
    fs::create_directories(serviceFolderOf(directory));
    writeAll(serviceFilePath(directory, name), std::string("[D-BUS Service]\nExec=") + program);
  }
  EXPECT_TRUE(isLumiskRegisteredFor(name));
}

TEST_F(DataDirectories, TheFirstFileDecidesWhoseANameIs) {
  const TemporaryFolder folder;
  const std::string first = folder / "first";
  const std::string second = folder / "second";
  set(nullptr, first.c_str(), second.c_str());
  const std::string name = "org.lumisk.Test";  // no package of this machine has one
  const auto put = [&](const std::string& directory, const std::string& program) {
    fs::create_directories(serviceFolderOf(directory));
    writeAll(serviceFilePath(directory, name), "[D-BUS Service]\nExec=" + program + "\n");
  };
  EXPECT_FALSE(isLumiskRegisteredFor(name));
  put(second, "/usr/libexec/lumisk-previewer --gapplication-service");
  EXPECT_TRUE(isLumiskRegisteredFor(name));
  put(first, "/opt/other");
  EXPECT_FALSE(isLumiskRegisteredFor(name));
}

}  // namespace
}  // namespace lumisk
