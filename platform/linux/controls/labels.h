#pragma once

#include <QLabel>
#include <string>

#include "platform/linux/controls/panel_look.h"

namespace notewick {

/// A label of plain text that follows the palette of its window.
class Label : public QLabel {
 public:
  Label(const std::string& content, double size, Tint tint, QFont::Weight weight = QFont::Normal);

  /// Wraps the text at this width, in points, and takes the height that it needs. No line ends
  /// between the scheme of an address and its host.
  void wrapAt(double width);
  /// The same for a width in device-independent pixels.
  void wrapWithin(int pixels);
  void display(const std::string& content);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void fitHeight();
  void colour();

  Tint tint_;
};

/// A label for what has just happened: screen readers speak its text when it appears. It is hidden
/// while empty.
class AnnouncingLabel : public Label {
 public:
  AnnouncingLabel(double size, Tint tint);

  void announce(const std::string& content);
};

/// One line of text, cut at its tail where it is wider than `maximumWidth`; the tool tip
/// then shows all of it, and screen readers always read all of it.
class ElidedLabel : public Label {
 public:
  ElidedLabel(const std::string& content, double size, Tint tint, int maximumWidth);
};

}  // namespace notewick
