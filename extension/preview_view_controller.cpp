#include "extension/preview_view_controller.h"

#include <utility>

namespace lumisk {

void PreviewViewController::preparePreviewOfFile(const FileURL& url, const Completion& completion) {
  dispatchPreview(url, *this, platform_, completion);
}

void PreviewViewController::takePreparedFile(FilePreview preview, const Completion& completion) {
  answerWith(std::move(preview), *this, platform_, completion);
}

void PreviewViewController::embed(ui::HostedView view) {
  children_.push_back(std::make_unique<HostedChild>(HostedChild{std::move(view)}));
}

}  // namespace lumisk
