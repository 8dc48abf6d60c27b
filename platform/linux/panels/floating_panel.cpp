#include "platform/linux/panels/floating_panel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
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
constexpr auto DECLINING_TIME = 300ms;
/// Window managers that are just moving a window do not hear what it asks for.
constexpr auto SETTLING_TIME = 200ms;
constexpr Qt::WindowFlags FLAGS = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint;

bool isWaylandSession() {
  return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

}  // namespace

PanelWindow::PanelWindow(const std::string& title)
    : QWidget(nullptr, FLAGS), witness_(isWaylandSession() ? Placing::always : Placing::once) {
  setScreenReaderRole(*this, QAccessible::Dialog);
  setWindowTitle(fromUtf8(title));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  keyboardReturns_.setSingleShot(true);
  keyboardReturns_.setInterval(DECLINING_TIME);
  connect(&keyboardReturns_, &QTimer::timeout, this, &PanelWindow::acceptKeyboard);
  scaleSettles_.setSingleShot(true);
  scaleSettles_.setInterval(SETTLING_TIME);
  connect(&scaleSettles_, &QTimer::timeout, this, &PanelWindow::adoptScale);
  connect(qApp, &QGuiApplication::screenRemoved, this,
          [this] { QTimer::singleShot(0, this, &PanelWindow::comeBackOnScreen); });
  qApp->installEventFilter(this);
}

void PanelWindow::orderFrontRegardless() {
  if (!isVisible() && isWaylandSession()) declinesKeyboard_ = true;
  orderFront();
}

void PanelWindow::makeKeyAndOrderFront() {
  acceptKeyboard();
  orderFront();
  activateWindow();
  requestActivation(*windowHandle());
}

void PanelWindow::orderFront() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
}

void PanelWindow::acceptKeyboard() {
  if (std::exchange(declinesKeyboard_, false)) setTakesKeyboard(*windowHandle(), true);
}

void PanelWindow::orderOut() {
  hide();
}

void PanelWindow::place(Placement placement) {
  placer_ = Placer::program;
  programPlacement_ = std::move(placement);
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

std::optional<QPoint> PanelWindow::wantedPlace(QSize frame) const {
  switch (placer_) {
    case Placer::windowManager:
      return std::nullopt;
    case Placer::program:
      return programPlacement_(frame);
    case Placer::user:
      return standingWhere(userFrame_, frame, availableScreens());
  }
  return std::nullopt;
}

void PanelWindow::applyPlacement() {
  const auto place = wantedPlace(frame().size());
  if (!place) return;
  if (!isVisible()) return move(*place);
  if (windowHandle()->framePosition() == *place) return witness_.stands();
  witness_.asked(*place);
  windowHandle()->setFramePosition(*place);  // QWidget may know an old frame only
}

void PanelWindow::comeBackOnScreen() {
  if (isVisible()) applyPlacement();
}

void PanelWindow::adoptScale() {
  if (!isVisible() || size() == minimumSize()) return;
  const QRect old = frame();
  const QPoint place = wantedPlace(old.size() + minimumSize() - size()).value_or(old.topLeft());
  if (place != old.topLeft()) witness_.asked(place);
  setGeometry(QRect(place + geometry().topLeft() - old.topLeft(), minimumSize()));
}

void PanelWindow::windowMoved() {
  if (scaleSettles_.isActive()) scaleSettles_.start();
  const QRect moved = windowHandle()->frameGeometry();
  const Mover mover = witness_.reported(moved.topLeft());
  if (mover == Mover::user) return userPlaced(moved);
  // The window manager has put a frame around the window, whose size is known only now.
  const bool isFramed = std::exchange(frameIsNew_, false) || mover == Mover::windowManager;
  if (isFramed && witness_.isDrawn()) applyPlacement();
}

void PanelWindow::userPlaced(const QRect& frame) {
  placer_ = Placer::user;
  userFrame_ = frame;
  if (userMoved) userMoved(frame);
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
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) requestMenu();
  if (!isReturn(*event) || defaultButton_ == nullptr) return QWidget::keyPressEvent(event);
  if (!event->isAutoRepeat()) defaultButton_->click();
}

void PanelWindow::requestMenu() {
  QWidget& focus = focusWidget() != nullptr ? *focusWidget() : *this;
  const QPoint place = focus.inputMethodQuery(Qt::ImCursorRectangle).toRect().bottomLeft();
  QContextMenuEvent request(QContextMenuEvent::Keyboard, place, focus.mapToGlobal(place));
  QApplication::sendEvent(&focus, &request);
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

bool PanelWindow::nativeEvent(const QByteArray& type, void* message, qintptr* result) {
  if (tellsOfFrame(type, message)) {
    frameIsNew_ = true;
    witness_.framed();
    if (witness_.isDrawn()) QTimer::singleShot(0, this, &PanelWindow::applyPlacement);
  }
  return QWidget::nativeEvent(type, message, result);
}

void PanelWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (witness_.isDrawn()) return;
  witness_.drawn();
  keyboardReturns_.start();
  QTimer::singleShot(0, this, &PanelWindow::applyPlacement);
}

void PanelWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  keyboardReturns_.stop();
  witness_.mapped(pos());
  connect(windowHandle(), &QWindow::screenChanged, &scaleSettles_, qOverload<>(&QTimer::start),
          Qt::UniqueConnection);
  setFloatingHints(*windowHandle());
  if (declinesKeyboard_) setTakesKeyboard(*windowHandle(), false);
  QTimer::singleShot(0, this, [this] {  // when the window is mapped
    if (!isVisible()) return;
    standAlone(*windowHandle());
    requestFloatingState(*windowHandle());
  });
}

}  // namespace notewick
