#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "scratch_installation.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;
using test::ProcessResult;
using test::readAll;
using test::ScratchInstallation;
using test::writeAll;
using testing::HasSubstr;

constexpr const char* kFilesService = "dbus-1/services/org.gnome.NautilusPreviewer.service";
constexpr const char* kNemoService = "dbus-1/services/org.nemo.Preview.service";

fs::path ownFile(const ScratchInstallation& installation, const char* service) {
  return installation.root / "home/.local/share" / service;
}

// The system has another previewer for each name; it comes before those of this machine's packages.
void installOtherPreviewers(const ScratchInstallation& installation) {
  const fs::path services = installation.root / "system/dbus-1/services";
  fs::create_directories(services);
  for (const std::string name : {"org.gnome.NautilusPreviewer", "org.nemo.Preview"}) {
    writeAll(services / (name + ".service"), "[D-BUS Service]\nName=" + name + "\nExec=/bin/sh\n");
  }
}

TEST(IntegrateCommand, WritesAServiceFileForEachName) {
  const ScratchInstallation installation;
  const ProcessResult result = installation.run({"integrate"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.standardError, "");
  const std::string exec =
      "Exec='" + installation.previewer().string() + "' --gapplication-service\n";
  const std::string mark =
      "# Written by lumisk integrate; lumisk integrate --remove takes it away.\n";
  EXPECT_EQ(readAll(ownFile(installation, kFilesService)),
            mark + "[D-BUS Service]\nName=org.gnome.NautilusPreviewer\n" + exec);
  EXPECT_EQ(readAll(ownFile(installation, kNemoService)),
            mark + "[D-BUS Service]\nName=org.nemo.Preview\n" + exec);
  EXPECT_EQ(installation.calls(), "reload-bus\n");
}

TEST(IntegrateCommand, TheFolderHoldsNothingElse) {
  const ScratchInstallation installation;
  installation.run({"integrate"});
  installation.run({"integrate"});
  const fs::path folder = ownFile(installation, kFilesService).parent_path();
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
  EXPECT_EQ(fs::status(ownFile(installation, kFilesService)).permissions(), fs::perms(0644));
}

TEST(IntegrateCommand, StatusFollowsIntegrateAndRemove) {
  const ScratchInstallation installation;
  installOtherPreviewers(installation);
  EXPECT_EQ(installation.run({"integrate", "--status"}).exitStatus, 3);
  installation.run({"integrate"});
  const ProcessResult after = installation.run({"integrate", "--status"});
  EXPECT_EQ(after.exitStatus, 0);
  EXPECT_THAT(after.standardOutput, HasSubstr("org.nemo.Preview: Lumisk"));
  EXPECT_EQ(installation.run({"integrate", "--remove"}).exitStatus, 0);
  const ProcessResult removed = installation.run({"integrate", "--status"});
  EXPECT_EQ(removed.exitStatus, 3);
  const std::string system = (installation.root / "system/dbus-1/services").string();
  EXPECT_EQ(removed.standardOutput,
            "org.gnome.NautilusPreviewer: another previewer, /bin/sh (" + system +
                "/org.gnome.NautilusPreviewer.service)\norg.nemo.Preview: another previewer, " +
                "/bin/sh (" + system + "/org.nemo.Preview.service)\n");
  EXPECT_FALSE(fs::exists(ownFile(installation, kFilesService)));
  EXPECT_FALSE(fs::exists(ownFile(installation, kNemoService)));
}

TEST(IntegrateCommand, StatusLooksWhereEveryBusDoes) {
  const ScratchInstallation installation;
  const ProcessResult result = installation.run({"integrate", "--status"});
  for (const std::string name : {"org.gnome.NautilusPreviewer", "org.nemo.Preview"}) {
    const std::string file = "/usr/share/dbus-1/services/" + name + ".service";
    const std::string expected = fs::exists(file) ? " (" + file + ")\n" : name + ": no previewer\n";
    EXPECT_THAT(result.standardOutput, HasSubstr(expected));
  }
}

TEST(IntegrateCommand, RemoveLeavesTheFoldersOfOthersAlone) {
  const ScratchInstallation installation;
  const fs::path bus = installation.root / "home/.local/share/dbus-1";
  struct Row {
    const char* label;
    const char* others;
    std::vector<fs::path> left;
  };
  const Row rows[] = {{"nobody's", nullptr, {}},
                      {"a service", "services/other.service", {bus / "services/other.service"}},
                      {"another kind", "other", {bus / "other"}}};
  for (const Row& row : rows) {
    installation.run({"integrate"});
    if (row.others != nullptr) writeAll(bus / row.others, "x");
    EXPECT_EQ(installation.run({"integrate", "--remove"}).exitStatus, 0);
    std::vector<fs::path> left;
    if (fs::exists(bus)) {
      for (const auto& entry : fs::recursive_directory_iterator(bus)) {
        if (!entry.is_directory() || fs::is_empty(entry)) left.push_back(entry.path());
      }
    }
    EXPECT_EQ(left, row.left) << row.label;
    EXPECT_EQ(fs::exists(bus), row.others != nullptr) << row.label;
    fs::remove_all(bus);
  }
}

TEST(IntegrateCommand, RemovingTwiceIsNoError) {
  const ScratchInstallation installation;
  const ProcessResult result = installation.run({"integrate", "--remove"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.standardOutput, "There was nothing to remove.\n");
}

TEST(IntegrateCommand, AForeignFileStaysAndNothingIsWritten) {
  for (const char* service : {kFilesService, kNemoService}) {
    const ScratchInstallation installation;
    const fs::path path = ownFile(installation, service);
    fs::create_directories(path.parent_path());
    const std::string foreign = "[D-BUS Service]\nName=x\nExec=/opt/other\n";
    writeAll(path, foreign);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"integrate"}, {"integrate", "--remove"}}) {
      const ProcessResult result = installation.run(words);
      EXPECT_EQ(result.exitStatus, 1);
      EXPECT_THAT(result.standardError, HasSubstr(path.string()));
      EXPECT_EQ(readAll(path), foreign);
    }
    const fs::path folder = path.parent_path();
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
  }
}

TEST(IntegrateCommand, LinksAndFoldersAreForeign) {
  const ScratchInstallation installation;
  const fs::path path = ownFile(installation, kFilesService);
  fs::create_directories(path.parent_path());
  fs::create_symlink("/nowhere", path);
  EXPECT_EQ(installation.run({"integrate"}).exitStatus, 1);
  EXPECT_TRUE(fs::is_symlink(path));
  fs::remove(path);
  fs::create_directory(path);
  EXPECT_EQ(installation.run({"integrate"}).exitStatus, 1);
  EXPECT_EQ(installation.run({"integrate", "--remove"}).exitStatus, 1);
  EXPECT_TRUE(fs::is_directory(path));
}

TEST(IntegrateCommand, RemoveTakesOursThoughAnotherIsForeign) {
  const ScratchInstallation installation;
  installation.run({"integrate"});
  writeAll(ownFile(installation, kNemoService), "foreign");
  EXPECT_EQ(installation.run({"integrate", "--remove"}).exitStatus, 1);
  EXPECT_FALSE(fs::exists(ownFile(installation, kFilesService)));
  EXPECT_EQ(readAll(ownFile(installation, kNemoService)), "foreign");
}

TEST(IntegrateCommand, FollowsXdgDataHomeUnlessItIsRelative) {
  const ScratchInstallation installation;
  const fs::path data = installation.root / "data";
  EXPECT_EQ(installation.run({"integrate"}, {"XDG_DATA_HOME=" + data.string()}).exitStatus, 0);
  EXPECT_TRUE(fs::exists(data / kFilesService));
  EXPECT_FALSE(fs::exists(ownFile(installation, kFilesService)));
  for (const char* value : {"XDG_DATA_HOME=data", "XDG_DATA_HOME="}) {
    EXPECT_EQ(installation.run({"integrate"}, {value}, {.workingDirectory = installation.root})
                  .exitStatus,
              0);
    EXPECT_TRUE(fs::exists(ownFile(installation, kFilesService))) << value;
    installation.run({"integrate", "--remove"});
  }
}

TEST(IntegrateCommand, WithoutAHomeItSaysSo) {
  const ScratchInstallation installation;
  const ProcessResult result = installation.run({"integrate"}, {"HOME="});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("no home directory"));
}

TEST(IntegrateCommand, AFolderThatCannotBeMadeIsAClearError) {
  const ScratchInstallation installation;
  const ProcessResult result = installation.run({"integrate"}, {"XDG_DATA_HOME=/dev/null"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("'/dev/null/dbus-1/services': Not a directory"));
}

TEST(IntegrateCommand, AFolderThatCannotBeWrittenIsAClearError) {
  const ScratchInstallation installation;
  // A file system that takes no files, whoever asks.
  const ProcessResult result = installation.run({"integrate"}, {"XDG_DATA_HOME=/proc/self"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("/proc/self/dbus-1/services"));
}

// Root's file in a folder where everybody may write, but replace only what is their own.
TEST(IntegrateCommand, HalfDoneIsTold) {
  if (geteuid() != 0) GTEST_SKIP() << "needs a file of another person's";
  const ScratchInstallation installation;
  const fs::path data = installation.root / "data";
  installation.run({"integrate"}, {"XDG_DATA_HOME=" + data.string()});
  fs::remove(data / kFilesService);
  fs::remove(installation.root / "calls");
  const fs::path services = (data / kFilesService).parent_path();
  fs::permissions(services, fs::perms::all | fs::perms::sticky_bit);
  fs::permissions(installation.root, fs::perms::all);
  fs::permissions(installation.root.parent_path(), fs::perms(0755));
  fs::permissions(installation.previewer(), fs::perms(0755));
  const ProcessResult result = test::runProcess(
      {"/usr/bin/setpriv", "--reuid=65534", "--clear-groups", "/usr/bin/env",
       "XDG_DATA_HOME=" + data.string(), (installation.root / "bin/lumisk").string(), "integrate"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("cannot write '" + (data / kNemoService).string()));
  EXPECT_EQ(result.standardOutput, "wrote " + (data / kFilesService).string() +
                                       "\nlumisk integrate --remove takes that back.\n");
  EXPECT_TRUE(fs::exists(data / kFilesService));
  EXPECT_EQ(installation.calls(), "reload-bus\n");
}

TEST(IntegrateCommand, WithoutAPreviewerItSaysSoAndWritesNothing) {
  const ScratchInstallation installation;
  fs::remove(installation.previewer());
  const ProcessResult result = installation.run({"integrate"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("not installed"));
  EXPECT_FALSE(fs::exists(ownFile(installation, kFilesService)));
}

TEST(IntegrateCommand, StatusTellsOfAPreviewerThatIsGone) {
  const ScratchInstallation installation;
  installation.run({"integrate"});
  fs::remove(installation.previewer());
  const ProcessResult result = installation.run({"integrate", "--status"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.standardOutput, HasSubstr("which is missing"));
  EXPECT_EQ(installation.run({"integrate", "--remove"}).exitStatus, 0);
}

TEST(IntegrateCommand, StatusTellsOfTheSystemsPreviewers) {
  const ScratchInstallation installation;
  const fs::path services = installation.root / "system/dbus-1/services";
  fs::create_directories(services);
  writeAll(services / "org.gnome.NautilusPreviewer.service",
           "[D-BUS Service]\nName=org.gnome.NautilusPreviewer\nExec=/bin/sh -c x\n");
  writeAll(services / "org.nemo.Preview.service",
           "[D-BUS Service]\nName=org.nemo.Preview\nExec=\"" + installation.previewer().string() +
               "\" --gapplication-service\n");
  const ProcessResult result = installation.run({"integrate", "--status"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.standardOutput,
              HasSubstr("org.gnome.NautilusPreviewer: another previewer, /bin/sh ("));
  EXPECT_THAT(result.standardOutput,
              HasSubstr("org.nemo.Preview: Lumisk, " + installation.previewer().string()));
  installation.run({"integrate"});
  EXPECT_EQ(installation.run({"integrate", "--status"}).exitStatus, 0);
}

TEST(IntegrateCommand, StatusTellsOfAFileForThisSessionAlone) {
  const ScratchInstallation installation;
  installation.run({"integrate"});
  const fs::path services = installation.root / "run/dbus-1/services";
  fs::create_directories(services);
  writeAll(services / "org.nemo.Preview.service",
           "[D-BUS Service]\nName=org.nemo.Preview\nExec=/bin/sh\n");
  const ProcessResult result = installation.run(
      {"integrate", "--status"}, {"XDG_RUNTIME_DIR=" + (installation.root / "run").string()});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.standardOutput, HasSubstr("org.gnome.NautilusPreviewer: Lumisk, "));
  EXPECT_THAT(result.standardOutput, HasSubstr("org.nemo.Preview: another previewer, /bin/sh ("));
}

TEST(IntegrateCommand, APathThatTheBusCannotReadIsRefused) {
  const ScratchInstallation installation;
  for (const std::string& name : {std::string("line\nfeed"), std::string("no text \xFF")}) {
    const fs::path root = installation.root / name;
    fs::create_directories(root / "bin");
    fs::copy(installation.root / "libexec", root / "libexec");
    fs::copy_file(installation.root / "bin/lumisk", root / "bin/lumisk");
    const ProcessResult result =
        test::runProcess({"/usr/bin/env", "HOME=" + (installation.root / "home").string(),
                          "XDG_DATA_HOME=", (root / "bin/lumisk").string(), "integrate"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.standardError, HasSubstr("cannot start a program with such a path"));
  }
}

}  // namespace
}  // namespace lumisk
