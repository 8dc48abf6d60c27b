#include "platform/linux/panels/floating_panel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/panel_look.h"
#include "platform/linux/controls/screen_reader_role.h"
#include "platform/linux/panels/panel_placement.h"
#include "platform/linux/panels/window_hints.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// A compositor gives the keyboard to a new window a moment after the window was drawn.
constexpr auto QUIET_TIME = 300ms;
constexpr Qt::WindowFlags FLAGS = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint;

bool isWaylandSession() {
  return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

}  // namespace

QList<QRect> availableScreens() {
  QList<QRect> available;
  for (const QScreen* screen : QGuiApplication::screens()) available << screen->availableGeometry();
  return available;
}

PanelWindow::PanelWindow(const std::string& title)
    : QWidget(nullptr, FLAGS), witness_(isWaylandSession() ? Placing::always : Placing::once) {
  setScreenReaderRole(*this, QAccessible::Dialog);
  setWindowTitle(fromUtf8(title));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  quietEnd_.setSingleShot(true);
  quietEnd_.setInterval(QUIET_TIME);
  connect(&quietEnd_, &QTimer::timeout, this, &PanelWindow::takeKeyboard);
  qApp->installEventFilter(this);
}

void PanelWindow::orderFrontRegardless() {
  quiet_ = quiet_ || (!isVisible() && isWaylandSession());
  orderFront();
}

void PanelWindow::makeKeyAndOrderFront() {
  takeKeyboard();
  orderFront();
  activateWindow();
  requestActivation(*windowHandle());
}

void PanelWindow::orderFront() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
}

void PanelWindow::takeKeyboard() {
  if (std::exchange(quiet_, false)) setTakesKeyboard(*windowHandle(), true);
}

void PanelWindow::orderOut() {
  hide();
}

void PanelWindow::place(Placement placement) {
  placement_ = std::move(placement);
  applyPlacement();
}

void PanelWindow::fitToContents() {
  layout()->setSizeConstraint(QLayout::SetNoConstraint);
  layout()->activate();
  const QSize wanted = layout()->totalSizeHint();
  if (wanted == size() && wanted == maximumSize()) return;
  setFixedSize(wanted);
  applyPlacement();
}

void PanelWindow::setDefaultButton(QPushButton& button) {
  defaultButton_ = &button;
  button.setDefault(true);
}

QRect PanelWindow::frame() const {
  const QWindow* const window = windowHandle();
  return window != nullptr ? geometry().marginsAdded(window->frameMargins()) : geometry();
}

void PanelWindow::applyPlacement() {
  if (!placement_) return;
  const QPoint place = placement_(frame().size());
  if (isVisible() && pos() != place) witness_.asked(place);
  move(place);
}

void PanelWindow::windowMoved() {
  const QRect moved = windowHandle()->frameGeometry();
  const Mover mover = witness_.reported(moved.topLeft());
  if (mover == Mover::user) return takeOver(moved);
  // Only now is the size of its frame known.
  if (mover == Mover::windowManager && witness_.isDrawn()) applyPlacement();
}

void PanelWindow::takeOver(const QRect& place) {
  placement_ = [place](QSize size) { return standingWhere(place, size, availableScreens()); };
  if (userMoved) userMoved(place);
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Quit && watched == qApp) quitting_ = true;
  if (event->type() == QEvent::Move && watched == windowHandle() && isVisible()) windowMoved();
  return QWidget::eventFilter(watched, event);
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (!quitting_ && !qApp->isSavingSession() && userClosed) userClosed();
}

void PanelWindow::contextMenuEvent(QContextMenuEvent* event) {
  std::unique_ptr<QMenu> menu = windowMenu ? windowMenu() : nullptr;
  if (!menu) return event->ignore();
  menu->setParent(this, menu->windowFlags());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu.release()->popup(event->globalPos());
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) askForMenu();
  if (!isReturn(*event) || defaultButton_ == nullptr) return QWidget::keyPressEvent(event);
  if (!event->isAutoRepeat()) defaultButton_->click();
}

void PanelWindow::askForMenu() {
  QWidget& focus = focusWidget() != nullptr ? *focusWidget() : *this;
  const QPoint place = focus.inputMethodQuery(Qt::ImCursorRectangle).toRect().bottomLeft();
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, place, focus.mapToGlobal(place));
  QApplication::sendEvent(&focus, &asked);
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grip_ = event->pos();
}

void PanelWindow::mouseMoveEvent(QMouseEvent* event) {
  if (!grip_ || !event->buttons().testFlag(Qt::LeftButton)) return;
  if ((event->pos() - *grip_).manhattanLength() < QApplication::startDragDistance()) return;
  grip_.reset();
  witness_.grabbed();
  windowHandle()->startSystemMove();
}

void PanelWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (witness_.isDrawn()) return;
  witness_.drawn();
  quietEnd_.start();
  QTimer::singleShot(0, this, &PanelWindow::applyPlacement);
}

void PanelWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  quietEnd_.stop();
  witness_.mapped();
  setFloatingHints(*windowHandle());
  if (quiet_) setTakesKeyboard(*windowHandle(), false);
  QTimer::singleShot(0, this, [this] {
    if (!isVisible()) return;
    standAlone(*windowHandle());
    requestFloatingState(*windowHandle());
  });
}

}  // namespace notewick
