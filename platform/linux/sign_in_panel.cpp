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
constexpr double STACK_SPACING = 10;
constexpr double ROW_SPACING = 8;
constexpr double STACK_INSET = 18;

QPoint middleOfScreen(QSize frame) {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? centred(screen->availableGeometry(), frame) : QPoint();
}

template <class Text>
Text* wrapped(Text* label) {
  label->wrapAt(TEXT_WIDTH);
  return label;
}

/// A field with its caption above it.
QLineEdit* addField(QBoxLayout& stack, const std::string& label, const std::string& example = "") {
  auto* const caption = new Label(label, 13, Tint::primary);
  auto* const field = new EntryField(label, example);
  field->setFixedWidth(points(FIELD_WIDTH));
  caption->setBuddy(field);
  stack.addWidget(caption);
  stack.addWidget(field);
  return field;
}

}  // namespace

QtSignInPanel::QtSignInPanel(const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate)
    : delegate_(std::move(delegate)), window_(texts.title) {
  build(texts);
  window_.userClosed = [this] {
    if (const auto target = delegate_.lock()) target->windowWillClose();
  };
  window_.fitToContents();
}

void QtSignInPanel::build(const SignInTexts& texts) {
  auto& stack = *columnIn(window_, STACK_SPACING, STACK_INSET);
  stack.addWidget(new Label(texts.heading, 14, Tint::primary, QFont::Bold));
  stack.addWidget(wrapped(new Label(texts.explanation, 11, Tint::secondary)));
  email_ = addField(stack, texts.emailLabel, texts.emailPlaceholder);
  email_->setInputMethodHints(Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase);
  password_ = addField(stack, texts.passwordLabel);
  password_->setEchoMode(QLineEdit::Password);
  stack.addWidget(error_ = wrapped(new AnnouncingLabel(11, Tint::error)));
  stack.addWidget(buttonRow(texts.signIn));
  email_->setFocus();
}

QWidget* QtSignInPanel::buttonRow(const std::string& title) {
  auto* const row = new QWidget;
  auto* const line = rowIn(*row, ROW_SPACING);
  line->addWidget(signInButton(title));
  line->addWidget(spinner_ = new Spinner);
  line->addStretch();
  return row;
}

QWidget* QtSignInPanel::signInButton(const std::string& title) {
  signIn_ = new PanelButton(title, title, PanelButton::Size::regular);
  window_.setDefaultButton(*signIn_);
  QObject::connect(signIn_, &QPushButton::clicked, &window_, [this] {
    if (const auto target = delegate_.lock()) target->signIn();
  });
  return signIn_;
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
