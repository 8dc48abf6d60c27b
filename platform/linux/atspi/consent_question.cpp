#include "platform/linux/atspi/consent_question.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QString>
#include <utility>

namespace notewick {
namespace {

const QString QUESTION = QStringLiteral(
    "Let VELK Notewick see window titles?\n\n"
    "To notice which participant you are working for, it reads the titles of your windows. "
    "On this desktop that needs the accessibility service, which is off.\n\n"
    "Turning it on changes a setting of your desktop for all programs, and it stays on until you "
    "turn it off there. Programs that are open now are seen after you start them again.");

/// A button without the picture that Qt would put there, coarse where no theme has one.
void label(QAbstractButton& button, const QString& text) {
  button.setText(text);
  button.setIcon(QIcon());
}

/// The size of a message box is known only when it is shown, and that of its frame not even then.
void moveToBottomLeft(QMessageBox& box) {
  constexpr int INSET = 24;
  constexpr int TITLE_BAR = 40;
  const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
  box.move(available.left() + INSET, available.bottom() - box.height() - TITLE_BAR - INSET);
}

}  // namespace

void ConsentQuestion::ask(std::function<void()> onYes) {
  if (box_) {
    box_->raise();
    box_->activateWindow();
    return;
  }
  box_ = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("VELK Notewick"), QUESTION,
                         QMessageBox::Yes | QMessageBox::No);
  box_->setDefaultButton(QMessageBox::No);
  box_->setEscapeButton(QMessageBox::No);
  label(*box_->button(QMessageBox::Yes), QStringLiteral("&Turn on"));
  label(*box_->button(QMessageBox::No), QStringLiteral("&Not now"));
  box_->setAttribute(Qt::WA_DeleteOnClose);
  box_->setModal(false);
  box_->setWindowFlag(Qt::WindowStaysOnTopHint);
  QObject::connect(box_, &QMessageBox::finished, box_, [onYes = std::move(onYes)](int answer) {
    if (answer == QMessageBox::Yes) onYes();
  });
  box_->show();
  moveToBottomLeft(*box_);
}

}  // namespace notewick
