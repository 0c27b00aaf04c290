#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "FakeClock.h"
#include "FakeOutput.h"
#include "ProgressIndicator.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ProgressIndicatorTest : public ::testing::Test {
 protected:
  testing::FakeClock clock_;
  testing::FakeOutput output_;
};

TEST_F(ProgressIndicatorTest, ShortWorkShowsNothingAndTakesNothingAway) {
  {
    ProgressIndicator progress{clock_, output_, "Reading"};
    clock_.advance(0.499);
    progress.update(1, 2);
  }
  EXPECT_THAT(output_.progress(), IsEmpty());
}

TEST_F(ProgressIndicatorTest, AfterHalfASecondABarAndAPercentageAppear) {
  ProgressIndicator progress{clock_, output_, "Reading"};
  clock_.advance(0.5);
  progress.update(1, 4);
  // A quarter of 24 cells.
  EXPECT_THAT(output_.progress(), ElementsAre("Reading  ██████░░░░░░░░░░░░░░░░░░  25%"));
}

TEST_F(ProgressIndicatorTest, ThePictureIsDrawnAtMostTenTimesASecond) {
  ProgressIndicator progress{clock_, output_, "Reading"};
  clock_.advance(0.5);
  progress.update(1, 4);
  clock_.advance(0.099);
  progress.update(2, 4);
  EXPECT_THAT(output_.progress(), SizeIs(1));
  clock_.advance(0.001);
  progress.update(3, 4);
  EXPECT_THAT(output_.progress(), SizeIs(2));
}

TEST_F(ProgressIndicatorTest, PartsShareTheWholeEvenly) {
  ProgressIndicator progress{clock_, output_, "Reading"};
  clock_.advance(1.0);
  progress.beginPart(1, 4);
  progress.update(50, 100);
  // One part of four is done, and half of the second.
  EXPECT_THAT(output_.progress(), ElementsAre("Reading 2 of 4  █████████░░░░░░░░░░░░░░░  38%"));
}

TEST_F(ProgressIndicatorTest, APartOfNothingIsDone) {
  ProgressIndicator progress{clock_, output_, "Reading"};
  clock_.advance(1.0);
  progress.beginPart(0, 0);
  progress.update(0, 0);
  EXPECT_THAT(output_.progress(), ElementsAre(HasSubstr("100%")));
}

TEST_F(ProgressIndicatorTest, TheEndTakesThePictureAway) {
  auto progress = std::make_unique<ProgressIndicator>(clock_, output_, "Reading");
  clock_.advance(1.0);
  progress->update(4, 4);
  progress.reset();
  EXPECT_THAT(output_.progress(), ElementsAre(HasSubstr("100%"), ""));
}

}  // namespace
}  // namespace quorvex
