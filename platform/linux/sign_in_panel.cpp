#include "platform/linux/sign_in_panel.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/linux/controls/entry_field.h"
#include "platform/linux/controls/labels.h"
#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/spinner.h"
#include "platform/linux/panels/panel_placement.h"

namespace notewick {
namespace {

constexpr double FIELD_WIDTH = 344;
constexpr double TEXT_WIDTH = 340;
constexpr double SPACING = 10;
constexpr double ROW_SPACING = 8;
constexpr double INSET = 18;

QPoint middleOfScreen(QSize frame) {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? centred(screen->availableGeometry(), frame) : QPoint();
}

}  // namespace

QtSignInPanel::QtSignInPanel(const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate)
    : delegate_(std::move(delegate)), window_(texts.title) {
  build(texts);
  window_.userClosed = [this] {
    if (const auto told = delegate_.lock()) told->windowWillClose();
  };
  window_.fitToContents();
}

void QtSignInPanel::build(const SignInTexts& texts) {
  stack_ = new QVBoxLayout(&window_);
  stack_->setSpacing(points(SPACING));
  stack_->setContentsMargins(points(INSET), points(INSET), points(INSET), points(INSET));

  stack_->addWidget(new Label(texts.heading, 14, Tint::primary, QFont::Bold));

  auto* const explanation = new Label(texts.explanation, 11, Tint::secondary);
  explanation->wrapAt(TEXT_WIDTH);
  stack_->addWidget(explanation);

  email_ = addField(texts.emailLabel);
  email_->setPlaceholderText(fromUtf8(texts.emailPlaceholder));
  email_->setInputMethodHints(Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase);

  password_ = addField(texts.passwordLabel);
  password_->setEchoMode(QLineEdit::Password);

  error_ = new AnnouncingLabel(11, Tint::error);
  error_->wrapAt(TEXT_WIDTH);
  stack_->addWidget(error_);

  stack_->addWidget(buttonRow(texts));
  email_->setFocus();
}

QLineEdit* QtSignInPanel::addField(const std::string& label) {
  auto* const caption = new Label(label, 13, Tint::primary);
  auto* const field = new EntryField(label);
  field->setFixedWidth(points(FIELD_WIDTH));
  caption->setBuddy(field);
  stack_->addWidget(caption);
  stack_->addWidget(field);
  return field;
}

QWidget* QtSignInPanel::buttonRow(const SignInTexts& texts) {
  auto* const row = new QWidget;
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(points(ROW_SPACING));

  signIn_ = new PanelButton(texts.signIn, texts.signIn, PanelButton::Size::regular);
  window_.setDefaultButton(*signIn_);
  QObject::connect(signIn_, &QPushButton::clicked, &window_, [this] {
    if (const auto told = delegate_.lock()) told->signIn();
  });
  line->addWidget(signIn_);

  spinner_ = new Spinner;
  line->addWidget(spinner_);
  line->addStretch();
  return row;
}

void QtSignInPanel::present() {
  window_.place(middleOfScreen);
  window_.makeKeyAndOrderFront();
  email_->setFocus(Qt::OtherFocusReason);
}

void QtSignInPanel::presentQuietly() {
  window_.place(middleOfScreen);
  window_.orderFrontRegardless();
}

std::string QtSignInPanel::email() const {
  return email_->text().toStdString();
}

std::string QtSignInPanel::password() const {
  return password_->text().toStdString();
}

void QtSignInPanel::setError(const std::string& text) {
  error_->announce(text);
  window_.fitToContents();
}

void QtSignInPanel::setBusy(bool busy) {
  signIn_->setDisabled(busy);
  spinner_->setVisible(busy);
}

}  // namespace notewick
