// A control shows that it has the keyboard in every palette.
#include <QVBoxLayout>

#include "platform/linux/controls/chooser.h"
#include "platform/linux/controls/entry_field.h"
#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/panel_look.h"
#include "platform/linux/controls/segmented_control.h"
#include "platform/linux/panels/note_field.h"
#include "tests/platform/linux/panels/panel_fixture.h"

namespace notewick {
namespace {

QPalette schemeOf(const QColor& window, const QColor& text, const QColor& highlight) {
  QPalette palette(text, window, window, window, window, text, text, window, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

/// How many points of the control look clearly different with the keyboard and without.
int pointsThatTell(QWidget& control) {
  const auto picture = [&](bool focused) {
    focused ? control.setFocus() : control.clearFocus();
    return control.grab().toImage();
  };
  const QImage with = picture(true), without = picture(false);
  int count = 0;
  for (int x = 0; x < with.width(); ++x) {
    for (int y = 0; y < with.height(); ++y) {
      count += contrast(with.pixelColor(x, y), without.pixelColor(x, y)) >= 3.0 ? 1 : 0;
    }
  }
  return count;
}

TEST(Focus, IsSeenOnEveryControlInEveryPalette) {
  const QPalette before = QApplication::palette();
  for (const QPalette& palette : {before, schemeOf(Qt::white, Qt::black, QColor(0, 0, 160)),
                                  schemeOf(Qt::black, Qt::white, QColor(0, 49, 110)),
                                  schemeOf(QColor(42, 46, 50), Qt::white, QColor(61, 174, 233))}) {
    QApplication::setPalette(palette);
    QWidget window;
    QVBoxLayout column(&window);
    PanelButton button("Send", "Send", PanelButton::Size::regular);
    button.setDefault(true);
    EntryField field("Email");
    NoteField note;
    Chooser chooser;
    SegmentedControl minutes({"15", "30"}, "Minutes");
    for (QWidget* const part :
         std::initializer_list<QWidget*>{&button, &field, &note, &chooser, &minutes}) {
      column.addWidget(part);
    }
    activate(window);
    for (QWidget* const part : std::initializer_list<QWidget*>{
             &button, &field, &note, &chooser, &control<QAbstractButton>(window, "15")}) {
      EXPECT_GE(pointsThatTell(*part), part->width())
          << part->metaObject()->className() << " on "
          << palette.color(QPalette::Window).name().toStdString();
    }
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace notewick
