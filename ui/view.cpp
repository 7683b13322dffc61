#include "ui/view.h"

#include <memory>
#include <utility>

namespace lumisk::ui {

// Copies, moves and comparisons of a view go through a table of functions for each of its kinds.
// They are made here once: as inline functions they took a third of the time that a source file
// compiles.

View::View(const View& other) = default;
View::View(View&& other) noexcept = default;
View& View::operator=(const View& other) = default;
View& View::operator=(View&& other) noexcept = default;
View::~View() = default;

// Their variants throw as little as where they are declared.
// NOLINTBEGIN(bugprone-exception-escape)

// Out of class, because the children are of a type that is complete only after them; noexcept,
// because clang 14 fails on a recursive defaulted comparison without it.
bool VStack::operator==(const VStack& other) const noexcept = default;
bool HStack::operator==(const HStack& other) const noexcept = default;
bool Overlay::operator==(const Overlay& other) const noexcept = default;
bool View::operator==(const View& other) const noexcept = default;

Content::Content(View view) : view_(std::make_shared<const View>(std::move(view))) {}

bool Content::operator==(const Content& other) const noexcept {
  return view_ == other.view_ || *view_ == *other.view_;
}

// NOLINTEND(bugprone-exception-escape)

}  // namespace lumisk::ui
