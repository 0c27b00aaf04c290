#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "RowListModel.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;

class RowListModelTest : public ::testing::Test {
 protected:
  static ListRow row(const char* key, int first, int second) {
    return {QString::fromLatin1(key), {first, second}};
  }

  [[nodiscard]] std::vector<int> firsts() const {
    std::vector<int> values;
    for (int i = 0; i < model.count(); ++i) {
      values.push_back(model.value(i, QStringLiteral("first")).toInt());
    }
    return values;
  }

  RowListModel model{{QStringLiteral("first"), QStringLiteral("second")}};
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
  QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
  QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
  QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
  QSignalSpy moved{&model, &QAbstractItemModel::rowsMoved};
  QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(RowListModelTest, RolesHaveTheGivenNames) {
  EXPECT_THAT(model.roleNames().values(), ::testing::UnorderedElementsAre("first", "second"));
}

TEST_F(RowListModelTest, TheSameRowsTellNothing) {
  model.setRows({row("a", 1, 2), row("b", 3, 4)});
  inserted.clear();
  model.setRows({row("a", 1, 2), row("b", 3, 4)});
  EXPECT_EQ(changed.count() + inserted.count() + removed.count() + moved.count(), 0);
}

TEST_F(RowListModelTest, AChangedValueTellsItsRowAndItsRoleOnly) {
  model.setRows({row("a", 1, 2), row("b", 3, 4)});
  model.setRows({row("a", 1, 2), row("b", 3, 5)});
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed.at(0).at(0).toModelIndex().row(), 1);
  EXPECT_EQ(changed.at(0).at(2).value<QList<int>>().size(), 1);
  EXPECT_EQ(model.value(1, QStringLiteral("second")), 5);
  EXPECT_EQ(inserted.count(), 2);
}

TEST_F(RowListModelTest, NewRowsAreInsertedAtTheirPlaceAndOldOnesStay) {
  model.setRows({row("a", 1, 0), row("c", 3, 0)});
  inserted.clear();
  model.setRows({row("a", 1, 0), row("b", 2, 0), row("c", 3, 0)});
  EXPECT_THAT(firsts(), ElementsAre(1, 2, 3));
  ASSERT_EQ(inserted.count(), 1);
  EXPECT_EQ(inserted.at(0).at(1).toInt(), 1);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(RowListModelTest, RowsThatAreGoneAreRemoved) {
  model.setRows({row("a", 1, 0), row("b", 2, 0), row("c", 3, 0)});
  model.setRows({row("c", 3, 0)});
  EXPECT_THAT(firsts(), ElementsAre(3));
  EXPECT_EQ(removed.count(), 2);
}

TEST_F(RowListModelTest, ANewOrderMovesRows) {
  model.setRows({row("a", 1, 0), row("b", 2, 0), row("c", 3, 0)});
  inserted.clear();
  model.setRows({row("c", 3, 0), row("a", 1, 0), row("b", 2, 0)});
  EXPECT_THAT(firsts(), ElementsAre(3, 1, 2));
  EXPECT_EQ(moved.count(), 1);
  EXPECT_EQ(inserted.count() + removed.count() + reset.count(), 0);
}

TEST_F(RowListModelTest, RowsOfOneKeyAreToldApartByTheirOrder) {
  model.setRows({row("a", 1, 0), row("a", 2, 0), row("a", 3, 0)});
  EXPECT_THAT(firsts(), ElementsAre(1, 2, 3));
  model.setRows({row("a", 1, 0), row("a", 2, 0)});
  EXPECT_THAT(firsts(), ElementsAre(1, 2));
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(RowListModelTest, EverythingAtOnce) {
  model.setRows({row("a", 1, 0), row("b", 2, 0), row("c", 3, 0), row("d", 4, 0)});
  model.setRows({row("e", 5, 0), row("d", 4, 1), row("b", 2, 0)});
  EXPECT_THAT(firsts(), ElementsAre(5, 4, 2));
  EXPECT_EQ(model.value(1, QStringLiteral("second")), 1);
  model.setRows({});
  EXPECT_EQ(model.count(), 0);
}

TEST_F(RowListModelTest, AnUnknownRowOrRoleHasNoValue) {
  model.setRows({row("a", 1, 2)});
  EXPECT_FALSE(model.value(1, QStringLiteral("first")).isValid());
  EXPECT_FALSE(model.value(-1, QStringLiteral("first")).isValid());
  EXPECT_FALSE(model.value(0, QStringLiteral("third")).isValid());
}

}  // namespace
}  // namespace quorvex
