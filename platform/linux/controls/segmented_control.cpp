#include "platform/linux/controls/segmented_control.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainterPath>

#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/panel_look.h"
#include "platform/linux/controls/screen_reader_role.h"

namespace notewick {
namespace {

constexpr double SEGMENTS_RADIUS = 4.0;
constexpr double HEIGHT = 26.0;

class Segment : public QAbstractButton {
 public:
  enum class Place { first, inner, last };

  Segment(const std::string& content, Place place) : place_(place) {
    setText(fromUtf8(content));
    setAccessibleName(fromUtf8(content));
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFont(panelFont(12));
    setFixedHeight(points(HEIGHT));
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (isReturn(*event)) return event->ignore();
    QAbstractButton::keyPressEvent(event);
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    paintButton(*this, [this](double inset) { return outline(inset); });
  }

 private:
  /// Neighbours share their border: only the outer ends are round and stand free.
  [[nodiscard]] QPainterPath outline(double inset) const {
    QRectF box = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    if (inset < 1.0 && place_ != Place::last) box.setRight(width() + 0.5);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const double radius = points(SEGMENTS_RADIUS);
    path.addRoundedRect(box, radius, radius);
    if (place_ != Place::first) path.addRect(box.adjusted(0, 0, -box.width() / 2, 0));
    if (place_ != Place::last) path.addRect(box.adjusted(box.width() / 2, 0, 0, 0));
    return path.simplified();
  }

  Place place_;
};

Segment::Place placeOf(std::size_t index, std::size_t count) {
  if (index == 0) return Segment::Place::first;
  return index + 1 == count ? Segment::Place::last : Segment::Place::inner;
}

}  // namespace

SegmentedControl::SegmentedControl(const std::vector<std::string>& segments,
                                   const std::string& label) {
  setScreenReaderRole(*this, QAccessible::Grouping);
  setAccessibleName(fromUtf8(label));
  auto* const row = rowIn(*this, 0);
  for (std::size_t i = 0; i < segments.size(); ++i) {
    auto* const segment = new Segment(segments[i], placeOf(i, segments.size()));
    row->addWidget(segment, 1);
    segments_.push_back(segment);
  }
}

std::optional<std::size_t> SegmentedControl::selected() const {
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    if (segments_[i]->isChecked()) return i;
  }
  return std::nullopt;
}

void SegmentedControl::deselect() {
  for (QAbstractButton* segment : segments_) {
    segment->setAutoExclusive(false);
    segment->setChecked(false);
    segment->setAutoExclusive(true);
  }
}

}  // namespace notewick
