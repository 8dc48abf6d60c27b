#include "platform/linux/panels/caught_list.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <algorithm>

#include "platform/linux/controls/labels.h"
#include "platform/linux/controls/panel_button.h"

namespace notewick {
namespace {

constexpr double ROW_SPACING = 4;
constexpr double BUTTON_SPACING = 6;

class SkipButton final : public PanelButton {
 public:
  using PanelButton::PanelButton;

 protected:
  void mouseDoubleClickEvent(QMouseEvent* event) override { event->accept(); }
};

}  // namespace

CaughtList::CaughtList(double width, std::string logTitle, std::string skipTitle, Pressed log,
                       Pressed skip)
    : logTitle_(std::move(logTitle)),
      skipTitle_(std::move(skipTitle)),
      log_(std::move(log)),
      skip_(std::move(skip)),
      stack_(columnIn(*this, ROW_SPACING, 0)) {
  setFixedWidth(points(width));
}

bool CaughtList::setRows(const std::vector<CaughtRow>& rows,
                         const std::optional<std::string>& more) {
  if (rows == contents_ && more == more_) return true;
  const auto focused = focus();
  contents_ = rows;
  more_ = more;
  clear();
  for (const CaughtRow& row : rows) addRow(row);
  if (more) addLine(*new Label(*more, 10, Tint::tertiary));
  if (!focused) return true;
  if (rows_.empty()) return false;
  restore(*focused);
  return true;
}

std::optional<CaughtList::Focus> CaughtList::focus() const {
  for (std::size_t tag = 0; tag < rows_.size(); ++tag) {
    const bool onSkip = rows_[tag].skip->hasFocus();
    if (onSkip || rows_[tag].log->hasFocus()) return Focus{tag, contents_[tag].text, onSkip};
  }
  return std::nullopt;
}

void CaughtList::restore(const Focus& focus) {
  const auto same = std::find_if(contents_.begin(), contents_.end(),
                                 [&](const CaughtRow& row) { return row.text == focus.text; });
  const std::size_t tag = same != contents_.end()
                              ? static_cast<std::size_t>(same - contents_.begin())
                              : std::min(focus.tag, rows_.size() - 1);
  (focus.onSkip ? rows_[tag].skip : rows_[tag].log)->setFocus(Qt::OtherFocusReason);
}

void CaughtList::clear() {
  rows_.clear();
  while (QLayoutItem* const item = stack_->takeAt(0)) {
    item->widget()->hide();
    item->widget()->setEnabled(false);  // ends a press
    item->widget()->deleteLater();
    delete item;
  }
}

void CaughtList::addRow(const CaughtRow& content) {
  const std::size_t tag = rows_.size();
  auto* const row = new QWidget;
  auto* const line = rowIn(*row, BUTTON_SPACING);
  line->addStretch();
  auto* const log = new PanelButton(logTitle_, content.logLabel, PanelButton::Size::small);
  auto* const skip = new SkipButton(skipTitle_, content.skipLabel, PanelButton::Size::small);
  addButton(*line, *log, [this, tag] { log_(tag); });
  addButton(*line, *skip, [this, tag] { skip_(tag); });
  const int room = maximumWidth() - line->sizeHint().width() - line->spacing();
  line->insertWidget(0, new ElidedLabel(content.text, 11, Tint::primary, room));
  addLine(*row);
  rows_.push_back({log, skip});
}

void CaughtList::addLine(QWidget& line) {
  stack_->addWidget(&line);
  line.show();
}

void CaughtList::addButton(QLayout& line, QPushButton& button,
                           const std::function<void()>& pressed) {
  button.setAutoDefault(true);
  connect(&button, &QPushButton::clicked, this, pressed);
  line.addWidget(&button);
}

}  // namespace notewick
