#include "platform/linux/quick_note_panel.h"

#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QSet>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "platform/linux/controls/chooser.h"
#include "platform/linux/controls/labels.h"
#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/segmented_control.h"
#include "platform/linux/panels/caught_list.h"
#include "platform/linux/panels/note_field.h"
#include "platform/linux/panels/panel_placement.h"
#include "platform/user_defaults.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

constexpr double WIDTH = 296;
constexpr double CHOOSER_HEIGHT = 26;
constexpr double NOTE_HEIGHT = 56;
constexpr double SPACING = 8;
constexpr double INSET = 12;
constexpr auto SAVE_DELAY = 500ms;
constexpr const char* FRAME_KEY = "VELKQuickWidget";

std::string textOf(const QRect& frame) {
  return QStringLiteral("%1 %2 %3 %4")
      .arg(frame.x())
      .arg(frame.y())
      .arg(frame.width())
      .arg(frame.height())
      .toStdString();
}

/// Absent when the text is not one that `textOf` gives.
std::optional<QRect> frameIn(const std::string& text) {
  QList<int> numbers;
  for (const QString& part : fromUtf8(text).split(QLatin1Char(' '))) numbers << part.toInt();
  if (numbers.size() != 4) return std::nullopt;
  const QRect frame(numbers[0], numbers[1], numbers[2], numbers[3]);
  return frame.isValid() && textOf(frame) == text ? std::optional(frame) : std::nullopt;
}

/// Brings the items to `titles` with as few changes as an open list of the chooser needs.
void replaceItems(QComboBox& chooser, const std::vector<std::string>& titles) {
  QStringList wanted;
  for (const std::string& title : titles) wanted << fromUtf8(title);
  const QSet<QString> kept(wanted.begin(), wanted.end());
  for (int i = chooser.count() - 1; i >= 0; --i) {
    if (!kept.contains(chooser.itemText(i))) chooser.removeItem(i);
  }
  for (int i = 0; i < wanted.size(); ++i) {
    if (chooser.itemText(i) != wanted[i]) chooser.insertItem(i, wanted[i]);
  }
  while (chooser.count() > wanted.size()) chooser.removeItem(chooser.count() - 1);
}

Chooser* participantChooser(const std::string& label) {
  auto* const chooser = new Chooser;
  // Qt gives a chooser its current item as its accessible name. A label of its own would keep Orca
  // from reading that name, and with it who is chosen.
  chooser->setAccessibleName(fromUtf8(label));
  chooser->setAccessibleDescription(fromUtf8(label));
  chooser->setFont(panelFont(13));
  chooser->setFixedSize(points(WIDTH), points(CHOOSER_HEIGHT));
  return chooser;
}

/// Keeps its room while it is hidden, so that nothing moves while the user types.
Label* placeholderLabel(const std::string& text) {
  auto* const label = new Label(text, 11, Tint::tertiary);
  QSizePolicy policy = label->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label->setSizePolicy(policy);
  return label;
}

SegmentedControl* minutesControl(const QuickNoteTexts& texts) {
  auto* const minutes = new SegmentedControl(texts.minutes, texts.minutesLabel);
  minutes->setFixedWidth(points(WIDTH));
  return minutes;
}

}  // namespace

QtQuickNotePanel::QtQuickNotePanel(const QuickNoteTexts& texts,
                                   std::weak_ptr<QuickNotePanelDelegate> delegate,
                                   UserDefaults& userDefaults, WindowMenu windowMenu)
    : delegate_(std::move(delegate)), userDefaults_(userDefaults), window_(texts.title) {
  build(texts);
  window_.windowMenu = std::move(windowMenu);
  window_.userClosed = [this] { forward([](auto& target) { target.windowWillClose(); }); };
  window_.userMoved = [this](const QRect& frame) {
    savedFrame_ = frame;
    saveSoon_.start();
  };
  saveSoon_.setSingleShot(true);
  saveSoon_.setInterval(SAVE_DELAY);
  QObject::connect(&saveSoon_, &QTimer::timeout, &window_, [this] { saveFrame(); });
  if (const auto saved = userDefaults_.string(FRAME_KEY)) savedFrame_ = frameIn(*saved);
  window_.fitToContents();
}

QtQuickNotePanel::~QtQuickNotePanel() {
  if (saveSoon_.isActive()) saveFrame();
}

void QtQuickNotePanel::makeKeyAndOrderFront() {
  focusNote();
  window_.makeKeyAndOrderFront();
}

void QtQuickNotePanel::build(const QuickNoteTexts& texts) {
  auto* const stack = columnIn(window_, SPACING, INSET);
  stack->addWidget(participants_ = participantChooser(texts.participantLabel));
  stack->addWidget(noteField(texts));
  stack->addWidget(placeholder_ = placeholderLabel(texts.placeholder));
  placeholder_->setBuddy(note_);
  stack->addWidget(minutes_ = minutesControl(texts));
  stack->addWidget(hint_ = new Label("", 10, Tint::secondary));
  hint_->setBuddy(minutes_);
  stack->addWidget(sendRow(texts));
  stack->addWidget(caughtHeader_ = new Label(texts.caughtHeader, 11, Tint::secondary, QFont::Bold));
  stack->addWidget(caughtList(texts));
  caughtHeader_->hide();
  note_->setFocus();
}

QWidget* QtQuickNotePanel::noteField(const QuickNoteTexts& texts) {
  note_ = new NoteField;
  note_->setAccessibleName(fromUtf8(texts.noteLabel));
  note_->setFixedSize(points(WIDTH), points(NOTE_HEIGHT));
  QObject::connect(note_, &NoteField::textChanged, &window_,
                   [this] { forward([](auto& target) { target.textDidChange(); }); });
  return note_;
}

QWidget* QtQuickNotePanel::sendRow(const QuickNoteTexts& texts) {
  auto* const row = new QWidget;
  auto* const line = rowIn(*row, SPACING);
  QWidget* const send = sendButton(texts.send);
  line->addWidget(send);
  line->addWidget(status_ = new AnnouncingLabel(10, Tint::secondary));
  status_->wrapWithin(points(WIDTH) - send->width() - line->spacing());
  line->addStretch();
  return row;
}

QWidget* QtQuickNotePanel::sendButton(const std::string& title) {
  auto* const send = new PanelButton(title, title, PanelButton::Size::regular);
  window_.setDefaultButton(*send);
  QObject::connect(send, &QPushButton::clicked, &window_,
                   [this] { forward([](auto& target) { target.send(); }); });
  return send;
}

QWidget* QtQuickNotePanel::caughtList(const QuickNoteTexts& texts) {
  caught_ = new CaughtList(
      WIDTH, texts.log, texts.skip,
      [this](std::size_t tag) { forward([tag](auto& target) { target.caughtLog(tag); }); },
      [this](std::size_t tag) { forward([tag](auto& target) { target.caughtSkip(tag); }); });
  caught_->hide();
  return caught_;
}

void QtQuickNotePanel::forward(const Event& event) const {
  if (const auto target = delegate_.lock()) event(*target);
}

void QtQuickNotePanel::setParticipants(const std::vector<std::string>& titles,
                                       std::optional<std::size_t> selected) {
  if (titles != titles_) replaceItems(*participants_, titles);
  titles_ = titles;
  participants_->setCurrentIndex(selected ? static_cast<int>(*selected) : -1);
}

std::optional<std::string> QtQuickNotePanel::selectedParticipant() const {
  if (participants_->currentIndex() < 0) return std::nullopt;
  return titles_[static_cast<std::size_t>(participants_->currentIndex())];
}

std::string QtQuickNotePanel::noteText() const {
  return note_->text().toStdString();
}

void QtQuickNotePanel::setNoteText(const std::string& text) {
  const QString wanted = fromUtf8(text);
  if (wanted == note_->text()) return;
  const QSignalBlocker silent(note_);
  note_->setPlainText(wanted);
}

void QtQuickNotePanel::focusNote() {
  note_->setFocus(Qt::OtherFocusReason);
}

void QtQuickNotePanel::setPlaceholderHidden(bool hidden) {
  placeholder_->setVisible(!hidden);
}

std::optional<std::size_t> QtQuickNotePanel::selectedMinutes() const {
  return minutes_->selected();
}

void QtQuickNotePanel::deselectMinutes() {
  minutes_->deselect();
}

void QtQuickNotePanel::setHint(const std::string& text) {
  hint_->display(text);
  minutes_->setAccessibleName(fromUtf8(text));
}

void QtQuickNotePanel::setStatus(const std::string& text) {
  status_->announce(text);
}

void QtQuickNotePanel::setCaught(const std::vector<CaughtRow>& rows,
                                 const std::optional<std::string>& more) {
  if (!caught_->setRows(rows, more)) focusNote();
  caughtHeader_->setVisible(!rows.empty());
  caught_->setVisible(!rows.empty() || more);
}

bool QtQuickNotePanel::applySavedFrame() {
  if (!savedFrame_) return false;
  window_.place([kept = *savedFrame_](QSize frame) {
    return standingWhere(kept, frame, availableScreens());
  });
  return true;
}

void QtQuickNotePanel::placeAtBottomRight(double inset) {
  window_.place([inset](QSize frame) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen != nullptr
               ? bottomRightCorner(screen->availableGeometry(), frame, static_cast<int>(inset))
               : QPoint();
  });
}

void QtQuickNotePanel::saveFrame() {
  if (savedFrame_) userDefaults_.setString(FRAME_KEY, textOf(*savedFrame_));
}

}  // namespace notewick
