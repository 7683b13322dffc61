#include "cli/describe.h"

#include <unistd.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/descriptor_output.h"
#include "extension/mode_selection.h"
#include "extension/preview_view_controller.h"
#include "platform/argument_url.h"
#include "platform/headless/headless_platform.h"
#include "ui/hosted_view.h"
#include "ui/outline.h"

namespace lumisk {

namespace {

int print(std::string_view text) {
  DescriptorOutput out(STDOUT_FILENO);
  out.append(text);
  out.flush();
  return exitStatusOfWriting(out.error());
}

// What a host does before the first drawing, and while a person looks on.
void appear(ui::HostedView& view, HeadlessPlatform& desktop) {
  view.onAppear();
  desktop.runUntilSettled();
}

bool choose(DocumentMode mode, ui::HostedView& view, HeadlessPlatform& desktop) {
  const bool isChosen = selectMode(view.body(), nameOf(mode));
  desktop.runUntilSettled();
  return isChosen;
}

std::string noSuchMode(const Arguments& arguments, const ui::HostedView& view) {
  std::string sentence = "the preview of '" + arguments.path() + "' has no mode called '" +
                         std::string(nameOf(*arguments.mode)) + "'";
  const std::vector<std::string> names = modeNames(view.body());
  for (std::size_t i = 0; i < names.size(); ++i)
    sentence += (i == 0 ? ": use " : " or ") + names[i];
  return sentence;
}

}  // namespace

int runDescribe(const Arguments& arguments) {
  const std::optional<FileURL> url = fileURLOfArgument(arguments.path());
  if (!url) {
    complain("'" + arguments.path() + "' is not the URI of a file on this machine");
    return kExitUsage;
  }
  HeadlessPlatform desktop(
      {.appearance = arguments.isDark ? AppearanceMatch::Dark : AppearanceMatch::Light,
       .localeName = {},
       .catalogueFolder = {}});
  PreviewViewController controller(desktop.platform());
  std::optional<ErrorRecord> failure;
  controller.preparePreviewOfFile(*url, [&](const auto& error) { failure = error; });
  if (failure) {
    complain("cannot show '" + arguments.path() + "': " + failure->localizedDescription);
    return kExitFailure;
  }
  ui::HostedView& view = controller.children().back()->view;
  appear(view, desktop);
  if (arguments.mode && !choose(*arguments.mode, view, desktop)) {
    complain(noSuchMode(arguments, view));
    return kExitUsage;
  }
  return print(ui::outline(view.body()));
}

}  // namespace lumisk
