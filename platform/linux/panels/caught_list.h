#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/quick_note_panel.h"

class QPushButton;

namespace notewick {

/// The rows of caught work, each a text and two buttons, and the line below them. A text has the
/// room that the buttons leave: fonts differ too much in width for a limit of its own. Rows are
/// made anew whenever one of them changes, so that a press that began on one row never counts for
/// another that took its place. Of a double click on ✕ the second press does nothing: by then the
/// next row stands under the mouse. A row that had the focus keeps it wherever it stands
/// afterwards; when it is gone the focus goes to the row now at its place, or to the last one.
class CaughtList : public QWidget {
 public:
  using Pressed = std::function<void(std::size_t tag)>;

  /// `width` is in points.
  CaughtList(double width, std::string logTitle, std::string skipTitle, Pressed log, Pressed skip);

  /// False when a button with the focus has gone and there is no row left to take it.
  [[nodiscard]] bool setRows(const std::vector<CaughtRow>& rows,
                             const std::optional<std::string>& more);

 private:
  struct Row {
    QPushButton* log;
    QPushButton* skip;
  };
  struct Focus {
    std::size_t tag;
    std::string text;
    bool onSkip;
  };

  [[nodiscard]] std::optional<Focus> focus() const;
  void restore(const Focus& focus);
  void clear();
  void addRow(const CaughtRow& content);
  void addLine(QWidget& line);  ///< seen at once, so that the size of the list counts it
  void addButton(QLayout& line, QPushButton& button, const std::function<void()>& pressed);

  std::string logTitle_;
  std::string skipTitle_;
  Pressed log_;
  Pressed skip_;
  QVBoxLayout* stack_;
  std::vector<CaughtRow> contents_;
  std::optional<std::string> more_;
  std::vector<Row> rows_;
};

}  // namespace notewick
