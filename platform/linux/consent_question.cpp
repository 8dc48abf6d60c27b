#include "platform/linux/consent_question.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QString>
#include <utility>

namespace notewick {
namespace {

/// A button without the picture that the toolkit would put there, coarse where no theme has one.
void label(QAbstractButton& button, const QString& text) {
  button.setText(text);
  button.setIcon(QIcon());
}

}  // namespace

void ConsentQuestion::ask(std::function<void()> onYes) {
  if (box_) {
    box_->raise();
    box_->activateWindow();
    return;
  }
  box_ = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("VELK Notewick"),
                         QStringLiteral("Let VELK Notewick see window titles?"),
                         QMessageBox::Yes | QMessageBox::No);
  box_->setInformativeText(QStringLiteral(
      "To notice which participant you are working for, it reads the titles of your windows. "
      "On this desktop that needs the accessibility service, which is off.\n\n"
      "Turning it on changes a setting of your desktop for all programs, and it stays on until you "
      "turn it off there. Programs that are open now are seen after you start them again."));
  box_->setDefaultButton(QMessageBox::No);
  box_->setEscapeButton(QMessageBox::No);
  label(*box_->button(QMessageBox::Yes), QStringLiteral("&Turn on"));
  label(*box_->button(QMessageBox::No), QStringLiteral("&Not now"));
  box_->setAttribute(Qt::WA_DeleteOnClose);
  box_->setModal(false);
  QObject::connect(box_, &QMessageBox::finished, box_, [onYes = std::move(onYes)](int answer) {
    if (answer == QMessageBox::Yes) onYes();
  });
  box_->show();
}

}  // namespace notewick
