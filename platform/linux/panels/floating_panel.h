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
/// promises about the keyboard and the desktops it can hold under X11 and XWayland only. When a
/// screen goes, the window comes back to one that is there. A window that changes to a screen of
/// another scale becomes as large as its contents are there.
///
/// Its place: first the window manager decides it, then the program (`place`), and from the user's
/// first move on the user; `Placer` says who does now. The window system reports every move and
/// never says who made it: MoveWitness tells them apart.
///
/// Its coming up: a window manager reads a window's hints at certain moments only. So the hints are
/// set before the window is mapped, and requested once more in the next turn, when it is
/// (`showEvent`). The size of its frame, and with it the place, is known when it is first drawn
/// (`paintEvent`); with a slow window manager later (`nativeEvent`). Shortly after that a Wayland
/// compositor gives the keyboard to a new window; a window that is shown without the keyboard
/// declines it until then.
class PanelWindow : public QWidget {
 public:
  /// Gives the top left corner of a frame of this size.
  using Placement = std::function<QPoint(QSize frame)>;

  explicit PanelWindow(const std::string& title);

  /// Shows the window without giving it the keyboard.
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
  bool nativeEvent(const QByteArray& type, void* message, qintptr* result) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  /// Who decides where the window stands.
  enum class Placer { windowManager, program, user };

  void orderFront();
  void acceptKeyboard();
  [[nodiscard]] std::optional<QPoint> wantedPlace(QSize frame) const;
  void applyPlacement();
  void comeBackOnScreen();
  /// On a screen of another scale the window has as many pixels as before. Takes its size and its
  /// place there in one step: smaller, but not yet moved, it could be back on the first screen.
  void adoptScale();
  void windowMoved();  ///< The window system reports a move, whoever made it.
  void userPlaced(const QRect& frame);
  /// Opens the context menu, as the Menu key does; Qt handles that key itself.
  void requestMenu();

  QPushButton* defaultButton_ = nullptr;
  Placer placer_ = Placer::windowManager;
  Placement programPlacement_;  ///< counts while the program is the placer
  QRect userFrame_;             ///< counts while the user is
  MoveWitness witness_;
  bool frameIsNew_ = false;        ///< since the last report of a move
  std::optional<QPoint> grip_;     ///< where the user has pressed the background
  bool declinesKeyboard_ = false;  ///< the window manager has been told to give it none
  QTimer keyboardReturns_;  ///< runs from the first drawing to the end of `declinesKeyboard_`
  QTimer scaleSettles_;     ///< runs from a change of screen until the window stands still
  bool quitting_ = false;   ///< the program is ending, and closing is not the user's doing
};

}  // namespace notewick
