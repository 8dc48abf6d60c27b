#pragma once

#include <QList>
#include <QPoint>
#include <optional>

namespace notewick {

/// Who moved a window.
enum class Mover {
  windowManager,  ///< It placed the window or put a frame around it.
  program,        ///< The window manager answers a request of the program.
  user,
};

/// How often a window manager places a window.
enum class Placing {
  once,   ///< X11: a window that is mapped again comes back where it was.
  always  ///< A Wayland compositor does it with each window that XWayland maps.
};

/// Tells the moves of a window that are the user's from all others. The window system reports that
/// a window stands somewhere else now and never says why, but its reports have an order:
///
/// - The first report of a window that is mapped tells where the window manager has placed it. It
///   may come before or after the window is first drawn. Before that the user cannot take hold of
///   the window. A report of the place that the window wanted may follow, as its frame is put on.
/// - The first report after a new frame tells where the window stands in it, with a slow window
///   manager after the drawing. There is none where the frame has the size and the place of the one
///   before.
/// - Each request for a place is answered by a report (ICCCM 4.1.5): of that place, or of one that
///   the window manager prefers. Requests and the user's input reach it in one queue, so that what
///   the user does after a request is reported after its answer. Of several answers that wait,
///   perhaps only the last one is reported.
/// - Every other report is the user's doing, unless the window stands there already: a frame that
///   changes its size is reported as a move to the same place.
///
/// No time is involved: a slow window manager answers late, but in the same order.
///
/// A window that stays where it is, because the window manager refuses a request or places the
/// window exactly where it was asked to, is not reported. As many of the user's next steps are then
/// taken for the missing reports, and the first may be undone; the steps that follow are the
/// user's.
class MoveWitness {
 public:
  explicit MoveWitness(Placing placing) : placing_(placing) {}

  /// The window is about to be mapped, and wants to stand there.
  void mapped(QPoint place);

  /// The window has been drawn for the first time since it was mapped.
  void drawn() { isDrawn_ = true; }
  [[nodiscard]] bool isDrawn() const { return isDrawn_; }

  /// The window manager has put a frame around the window, perhaps the one it had.
  void framed() { frameIsNew_ = true; }

  /// The window stands where it is wanted, in its frame: no report of that is missing.
  void stands() { frameIsNew_ = false; }

  /// The program asks for another place. Places are those of the frame's top left corner.
  void asked(QPoint place);

  /// The user has taken hold of the window.
  void grabbed();

  /// The window stands there now, and may have stood there before.
  [[nodiscard]] Mover reported(QPoint place);

 private:
  Placing placing_;
  bool isDrawn_ = false;
  bool isPlaced_ = false;
  bool frameIsNew_ = false;     ///< and a report of where the window stands in it may come
  std::optional<QPoint> last_;  ///< reported since the window was mapped
  QList<QPoint> asked_;         ///< since the user's last move, each once, the newest last
  qsizetype owed_ = 0;          ///< answers that the window manager still has to give
};

}  // namespace notewick
