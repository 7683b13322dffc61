#include "extension/dispatch.h"

#include <cerrno>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

#include "core/markdown_page.h"
#include "core/preview_kind.h"
#include "core/source_page.h"
#include "core/table_page.h"
#include "extension/preview_view_controller.h"
#include "folder/folder_preview_view.h"
#include "platform/file_reading.h"
#include "platform/previewed_file.h"
#include "ui/hosted_view.h"
#include "ui/shared_text.h"
#include "views/json_dual_preview_view.h"
#include "views/jsonl_dual_preview_view.h"
#include "views/markdown_dual_preview_view.h"
#include "web/html_preview_view.h"

namespace lumisk {

namespace {

constexpr const char* kFailureLine = "Failed to load and parse file: ";

/// Builds the view of one file. The views of documents that can be shown as they are share the
/// memory that the file was read into; the others let go of it once their page is built.
class FileViewBuilder {
 public:
  FileViewBuilder(const FileURL& url, PreviewedFile file, bool isDark, const StringTable& strings)
      : url_(url),
        folder_(url.deletingLastPathComponent()),
        file_(std::make_shared<const PreviewedFile>(std::move(file))),
        strings_(strings),
        isDark_(isDark) {}

  ui::HostedView build() const {
    switch (file_->kind()) {
      case PreviewKind::Markdown:
        return buildMarkdown();
      case PreviewKind::Table:
        return page(
            buildTableHTML(file_->text(), url_, tableSeparator(file_->extension()), isDark_));
      case PreviewKind::Jsonl:
        return ui::HostedView(JSONLDualPreviewView(
            sharedText(), folder_, isDark_, JSONLDualPreviewView::PreviewMode::Text, strings_));
      case PreviewKind::Json:
        return ui::HostedView(JSONDualPreviewView(
            sharedText(), folder_, isDark_, JSONDualPreviewView::PreviewMode::Formatted, strings_));
      case PreviewKind::Code:
      case PreviewKind::Folder:  // a file is none
        break;
    }
    return page(buildSourceHTML(file_->text(), url_, file_->extension(), isDark_));
  }

 private:
  ui::HostedView buildMarkdown() const {
    std::string html = buildMarkdownPage(file_->text(), folder_.absoluteString(), isDark_);
    return ui::HostedView(
        MarkdownDualPreviewView(sharedText(), std::move(html), folder_, strings_));
  }

  ui::HostedView page(std::string html) const {
    return ui::HostedView(HTMLPreviewView{
        .htmlContent = std::move(html), .baseURL = folder_, .onCheckboxToggle = {}, .onLoad = {}});
  }

  ui::SharedText sharedText() const { return {file_, file_->text()}; }

  const FileURL& url_;
  const FileURL folder_;
  const std::shared_ptr<const PreviewedFile> file_;
  const StringTable& strings_;
  const bool isDark_;
};

}  // namespace

// A page that does not fit in memory is an error like a file that does not.
FilePreview prepareFile(const FileURL& url, const std::function<bool()>& isDark,
                        const StringTable& strings, const std::function<bool()>& isWanted) {
  try {
    std::variant<PreviewedFile, ErrorRecord> file = PreviewedFile::load(url, isWanted);
    if (auto* error = std::get_if<ErrorRecord>(&file)) return std::move(*error);
    return FileViewBuilder(url, std::get<PreviewedFile>(std::move(file)), isDark(), strings)
        .build();
  } catch (const std::bad_alloc&) {
    return notEnoughMemoryError();
  }
}

ErrorRecord notEnoughMemoryError() {
  return {kPosixErrorDomain, ENOMEM, std::generic_category().message(ENOMEM)};
}

void answerWith(FilePreview preview, PreviewViewController& controller, const Platform& platform,
                const Completion& completion) {
  if (const auto* error = std::get_if<ErrorRecord>(&preview)) {
    platform.standardOutput.writeLine(kFailureLine + error->description());
    completion(*error);
    return;
  }
  controller.embed(std::get<ui::HostedView>(std::move(preview)));
  completion(std::nullopt);
}

void dispatchPreview(const FileURL& url, PreviewViewController& controller,
                     const Platform& platform, const Completion& completion) {
  if (isExistingDirectory(url.path())) {
    controller.embed(ui::HostedView(FolderPreviewView(url, platform)));
    completion(std::nullopt);
    return;
  }
  const auto isDark = [&] { return isDarkMode(platform.mainQueue, platform.appearance); };
  answerWith(prepareFile(url, isDark, platform.strings), controller, platform, completion);
}

ui::SharedText pageOf(const ui::HostedView& fileView) {
  if (const auto* view = fileView.as<HTMLPreviewView>()) return view->htmlContent;
  if (const auto* view = fileView.as<MarkdownDualPreviewView>()) return view->htmlContent;
  if (const auto* view = fileView.as<JSONDualPreviewView>()) return view->state->renderedHTML;
  if (const auto* view = fileView.as<JSONLDualPreviewView>()) return view->state->renderedHTML;
  return {};
}

}  // namespace lumisk
