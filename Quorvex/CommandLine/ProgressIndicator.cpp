#include "ProgressIndicator.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "TextBox.h"

namespace quorvex {

ProgressIndicator::ProgressIndicator(Clock& clock, Output& output, std::string title)
    : clock_(&clock),
      output_(&output),
      title_(std::move(title)),
      nextPicture_(clock.monotonic() + patience) {}

ProgressIndicator::~ProgressIndicator() {
  if (isShown_) {
    output_->showProgress("");
  }
}

void ProgressIndicator::beginPart(std::size_t index, std::size_t count) {
  part_ = index;
  partCount_ = std::max<std::size_t>(count, 1);
}

void ProgressIndicator::update(std::size_t done, std::size_t total) {
  const auto now = clock_->monotonic();
  if (now < nextPicture_) {
    return;
  }
  nextPicture_ = now + refresh;
  output_->showProgress(picture(done, total));
  isShown_ = true;
}

std::string ProgressIndicator::picture(std::size_t done, std::size_t total) const {
  constexpr std::size_t width = 24;
  const double ofPart = total == 0 ? 1.0 : static_cast<double>(done) / static_cast<double>(total);
  const double ofAll =
      std::clamp((static_cast<double>(part_) + ofPart) / static_cast<double>(partCount_), 0.0, 1.0);
  const std::string counted =
      partCount_ == 1 ? std::string{} : fmt::format(" {} of {}", part_ + 1, partCount_);
  return fmt::format("{}{}  {} {:3.0f}%", title_, counted,
                     cells(ofAll * static_cast<double>(width), width), ofAll * 100.0);
}

}  // namespace quorvex
