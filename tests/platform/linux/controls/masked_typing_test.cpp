#include "platform/linux/controls/masked_typing.h"

#include <gtest/gtest.h>

#include <QLineEdit>

namespace notewick {
namespace {

class MaskedTyping : public testing::Test {
 protected:
  MaskedTyping() { field_.setEchoMode(QLineEdit::Password); }

  QLineEdit field_;
  QAccessibleTextInsertEvent typed_{&field_, 2, "secret"};
};

TEST_F(MaskedTyping, TellsABulletForEachCharacterOfAPassword) {
  const auto typed = masked(typed_);
  const auto& told = dynamic_cast<QAccessibleTextInsertEvent&>(*typed);
  EXPECT_EQ(told.textInserted(), QStringLiteral("••••••"));
  EXPECT_EQ(told.changePosition(), 2);
  EXPECT_EQ(told.object(), &field_);

  QAccessibleTextRemoveEvent removal(&field_, 0, "ab");
  const auto removed = masked(removal);
  EXPECT_EQ(dynamic_cast<QAccessibleTextRemoveEvent&>(*removed).textRemoved(),
            QStringLiteral("••"));

  QAccessibleTextUpdateEvent change(&field_, 0, "ab", "c");
  const auto changed = masked(change);
  EXPECT_EQ(dynamic_cast<QAccessibleTextUpdateEvent&>(*changed).textRemoved(),
            QStringLiteral("••"));
  EXPECT_EQ(dynamic_cast<QAccessibleTextUpdateEvent&>(*changed).textInserted(),
            QStringLiteral("•"));
}

TEST_F(MaskedTyping, LeavesAllElseAsItIs) {
  QAccessibleEvent focused(&field_, QAccessible::Focus);
  EXPECT_EQ(masked(focused), nullptr);
  field_.setEchoMode(QLineEdit::Normal);
  EXPECT_EQ(masked(typed_), nullptr);
}

}  // namespace
}  // namespace notewick
