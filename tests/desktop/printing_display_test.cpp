// Printing and what happens meanwhile: the file manager goes on, the person closes the preview.

#include <gtest/gtest.h>
#include <gtk/gtkunixprint.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "panel_test.h"

namespace lumisk::test {
namespace {

using desktop::Command;

class Printing : public PanelTest {
 protected:
  void SetUp() override {
    // The engine's own helpers leave this file behind where they run as root.
    if (std::filesystem::exists("/.flatpak-info"))
      GTEST_SKIP() << "the engine takes the machine for a Flatpak and asks a portal to print";
    std::string text = "# Large\n\n<!--" + std::string(3'000'000, 'x') + "-->\n\n";
    for (int i = 0; i < 300; ++i) text += "Line of tides.\n\n";
    writeAll(folder_ / "large.md", text);
    for (text.clear(); text.size() < 300'000;) text += "int value = 1;\n";
    writeAll(folder_ / "long.cpp", text);
  }

  GtkDialog* dialog() {
    GListModel* const windows = gtk_window_get_toplevels();
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
      const auto window =
          desktop::GRef<GtkWindow>::adopt(GTK_WINDOW(g_list_model_get_item(windows, i)));
      if (GTK_IS_DIALOG(window.get())) return GTK_DIALOG(window.get());
    }
    return nullptr;
  }
  /// Prints; `meanwhile` is done while the person is asked how.
  void print(const std::function<void()>& meanwhile) {
    desktop::Deferred look;
    bool hasCome = false;
    std::function<void()> again = [&] {
      hasCome = dialog() != nullptr && gtk_widget_get_mapped(GTK_WIDGET(dialog())) == TRUE;
      if (hasCome) return meanwhile();
      look.after(50, again);
    };
    again();
    panel_->perform(Command::Print);  // returns once the question is answered
    EXPECT_TRUE(hasCome);
  }
};

/// As a person does who chooses to print into this file.
void answerWithFile(GtkDialog* dialog, const std::filesystem::path& file) {
  auto* const question = GTK_PRINT_UNIX_DIALOG(dialog);
  const auto settings = desktop::GRef<GtkPrintSettings>::adopt(gtk_print_settings_new());
  gtk_print_settings_set_printer(settings.get(), "Print to File");
  gtk_print_settings_set(settings.get(), GTK_PRINT_SETTINGS_OUTPUT_URI,
                         ("file://" + file.string()).c_str());
  gtk_print_unix_dialog_set_settings(question, settings.get());
  EXPECT_TRUE(
      runUntil([&] { return gtk_print_unix_dialog_get_selected_printer(question) != nullptr; }));
  gtk_dialog_response(dialog, GTK_RESPONSE_OK);
}

TEST_F(Printing, TheQuestionGoesWithItsDocument) {
  for (const char* const name : {"long.md", "large.md"}) {
    SCOPED_TRACE(name);
    closings_ = 0;
    ASSERT_NO_FATAL_FAILURE(open(name));
    print([this] { panel_->close(); });  // as the file manager does
    EXPECT_TRUE(closes());
    EXPECT_TRUE(runUntil([this] { return dialog() == nullptr; }));
    ASSERT_NO_FATAL_FAILURE(open("data.csv"));
    EXPECT_EQ(evaluate(page(), "document.querySelectorAll('td').length"), "2");
    panel_->close();
  }
}

/// How many pages a PDF file says that it has; 0 as long as it is not whole. Its pages may lie in
/// groups, each with a count of its own.
int pagesOf(const std::filesystem::path& file) {
  const std::string text = readAll(file);
  if (text.find("%%EOF") == std::string::npos) return 0;
  static const std::regex count("/Count (\\d+)");
  int pages = 0;
  for (std::sregex_iterator at(text.begin(), text.end(), count), end; at != end; ++at)
    pages = std::max(pages, std::stoi((*at)[1]));
  return pages;
}

TEST_F(Printing, GoesOnAfterThePreviewHasGone) {
  struct Row {
    const char* name;
    int leastPages;
  };
  for (const auto& [name, leastPages] : {Row{"long.md", 4}, {"large.md", 4}, {"long.cpp", 100}}) {
    SCOPED_TRACE(name);
    const std::filesystem::path printed = folder_ / (std::string(name) + ".pdf");
    ASSERT_NO_FATAL_FAILURE(open(name));
    print([&] { answerWithFile(dialog(), printed); });
    panel_->close();
    EXPECT_TRUE(runUntil([&] { return std::filesystem::exists(printed) && pagesOf(printed) > 0; }));
    EXPECT_GE(pagesOf(printed), leastPages)
        << "all of the document, and not the empty page of a view kept ready";
  }
}

}  // namespace
}  // namespace lumisk::test
