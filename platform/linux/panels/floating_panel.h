#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/panels/move_witness.h"

class QMenu;
class QPushButton;

namespace notewick {

/// The window both panels stand in: titled, closable, above the others, on every desktop, in no
/// task bar, moved by its background as well as by its title, as large as its contents. What it
/// promises about the keyboard and the desktops it can hold under X11 and XWayland only.
class PanelWindow : public QWidget {
 public:
  /// Gives the top left corner of a frame of this size.
  using Placement = std::function<QPoint(QSize frame)>;

  explicit PanelWindow(const std::string& title);

  void orderFrontRegardless();
  void makeKeyAndOrderFront();
  void orderOut();

  /// Puts the window where `placement` says, now and whenever its size changes, until the user
  /// moves it.
  void place(Placement placement);

  /// Takes the size that the contents ask for.
  void fitToContents();

  /// The button that Return presses wherever no control has a use for Return.
  void setDefaultButton(QPushButton& button);

  /// The user closed the window, which is hidden but lives on. Quitting and the end of the session
  /// close nothing.
  std::function<void()> userClosed;

  /// The user moved the window; gives its frame.
  std::function<void(const QRect& frame)> userMoved;

  /// Makes the menu that the window offers as its context menu; null when it offers none now.
  std::function<std::unique_ptr<QMenu>()> windowMenu;

  [[nodiscard]] QRect frame() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void orderFront();
  void takeKeyboard();
  void applyPlacement();
  void windowMoved();  ///< as the window system reports it, also where this program asked for it
  void takeOver(const QRect& place);  ///< which the user has given the window
  void askForMenu();                  ///< as the Menu key does, which Qt itself knows

  QPushButton* defaultButton_ = nullptr;
  Placement placement_;
  std::optional<QPoint> grip_;  ///< where the background was pressed
  MoveWitness witness_;         ///< tells the user's moves from all others
  bool quiet_ = false;          ///< it is being mapped, and must not get the keyboard by that
  QTimer quietEnd_;             ///< runs from the first drawing to the end of `quiet_`
  bool quitting_ = false;
};

/// The available parts of all screens.
[[nodiscard]] QList<QRect> availableScreens();

}  // namespace notewick
