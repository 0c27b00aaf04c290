#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Observable.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Heard = std::vector<int>;

/// A subscriber that writes down what it hears.
auto into(Heard& heard) {
  return [&heard](int value) { heard.push_back(value); };
}

TEST(Observable, StartsWithItsInitialValueAndTellsNobody) {
  Observable<int> number{7};
  Heard heard;
  const Subscription subscription = number.subscribe(into(heard));
  EXPECT_EQ(number.value(), 7);
  EXPECT_THAT(heard, IsEmpty());
}

TEST(Observable, WithoutAnInitialValueItHoldsTheTypesOwn) {
  EXPECT_EQ(Observable<std::optional<double>>{}.value(), std::nullopt);
}

TEST(Observable, EveryWriteNotifiesAlsoOneOfTheSameValue) {
  Observable<int> number;
  Heard heard;
  const Subscription subscription = number.subscribe(into(heard));
  number.set(1);
  number.set(1);
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(1, 1, 2));
}

TEST(Observable, AComparedWriteNotifiesOnlyWhenTheValueChanges) {
  Observable<int> number{1};
  Heard heard;
  const Subscription subscription = number.subscribe(into(heard));
  EXPECT_FALSE(number.setIfChanged(1));
  EXPECT_TRUE(number.setIfChanged(2));
  EXPECT_FALSE(number.setIfChanged(2));
  EXPECT_THAT(heard, ElementsAre(2));
  EXPECT_EQ(number.value(), 2);
}

TEST(Observable, AChangeInPlaceNotifiesOnceWithTheWholeResult) {
  Observable<std::vector<int>> list;
  std::vector<std::vector<int>> heard;
  const Subscription subscription =
      list.subscribe([&](const std::vector<int>& value) { heard.push_back(value); });
  list.modify([](std::vector<int>& value) {
    value.push_back(1);
    value.push_back(2);
  });
  EXPECT_THAT(heard, ElementsAre(ElementsAre(1, 2)));
}

TEST(Observable, SubscribersSeeTheNewValueInTheObservableToo) {
  Observable<int> number;
  int seen = 0;
  const Subscription subscription = number.subscribe([&](int) { seen = number.value(); });
  number.set(5);
  EXPECT_EQ(seen, 5);
}

TEST(Observable, SubscribersAreCalledInTheOrderOfTheirSubscription) {
  Observable<int> number;
  std::string order;
  const Subscription a = number.subscribe([&](int) { order += 'a'; });
  const Subscription b = number.subscribe([&](int) { order += 'b'; });
  const Subscription c = number.subscribe([&](int) { order += 'c'; });
  number.set(1);
  EXPECT_EQ(order, "abc");
}

TEST(Observable, ADestroyedSubscriptionHearsNothingMore) {
  Observable<int> number;
  Heard heard;
  {
    const Subscription subscription = number.subscribe(into(heard));
    number.set(1);
  }
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(1));
}

TEST(Observable, ACancelledSubscriptionHearsNothingMoreAndMayBeCancelledAgain) {
  Observable<int> number;
  Heard heard;
  Subscription subscription = number.subscribe(into(heard));
  number.set(1);
  subscription.cancel();
  subscription.cancel();
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(1));
}

TEST(Observable, AMovedSubscriptionGoesOnAndItsSourceEndsNothing) {
  Observable<int> number;
  Heard heard;
  Subscription kept;
  {
    Subscription first = number.subscribe(into(heard));
    Subscription second{std::move(first)};
    kept = std::move(second);
  }
  number.set(1);
  EXPECT_THAT(heard, ElementsAre(1));
}

TEST(Observable, AssigningASubscriptionEndsTheOneBefore) {
  Observable<int> number;
  Heard first;
  Heard second;
  Subscription subscription = number.subscribe(into(first));
  subscription = number.subscribe(into(second));
  number.set(1);
  EXPECT_THAT(first, IsEmpty());
  EXPECT_THAT(second, ElementsAre(1));
}

TEST(Observable, ASubscriptionMayOutliveItsObservable) {
  Heard heard;
  Subscription subscription;
  {
    Observable<int> number;
    subscription = number.subscribe(into(heard));
    number.set(1);
  }
  subscription.cancel();
  EXPECT_THAT(heard, ElementsAre(1));
}

TEST(Observable, EndingASubscriptionLetsGoOfWhatItsCallbackCaptured) {
  Observable<int> number;
  const auto captured = std::make_shared<int>(1);
  Subscription subscription = number.subscribe([captured](int) {});
  EXPECT_EQ(captured.use_count(), 2);
  subscription.cancel();
  EXPECT_EQ(captured.use_count(), 1);
}

TEST(Observable, DestroyingAnObservableLetsGoOfWhatItsCallbacksCaptured) {
  const auto captured = std::make_shared<int>(1);
  Subscription subscription;
  {
    Observable<int> number;
    subscription = number.subscribe([captured](int) {});
  }
  EXPECT_EQ(captured.use_count(), 1);
}

TEST(Observable, ASubscriberMayEndItsOwnSubscriptionDuringANotification) {
  Observable<int> number;
  Heard heard;
  Heard others;
  Subscription own;
  const auto captured = std::make_shared<int>(10);
  own = number.subscribe([&, captured](int value) {
    own.cancel();
    heard.push_back(value + *captured);
  });
  const Subscription other = number.subscribe(into(others));
  number.set(1);
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(11));
  EXPECT_THAT(others, ElementsAre(1, 2));
  EXPECT_EQ(captured.use_count(), 1);
}

TEST(Observable, ASubscriberEndedByAnEarlierOneIsNotCalledAnyMore) {
  Observable<int> number;
  Heard heard;
  Subscription later;
  const Subscription earlier = number.subscribe([&](int) { later.cancel(); });
  later = number.subscribe(into(heard));
  number.set(1);
  EXPECT_THAT(heard, IsEmpty());
}

TEST(Observable, EndingAnEarlierSubscriberSkipsNobody) {
  Observable<int> number;
  Heard heard;
  Subscription earlier = number.subscribe([](int) {});
  const Subscription ending = number.subscribe([&](int) { earlier.cancel(); });
  const Subscription later = number.subscribe(into(heard));
  number.set(1);
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(1, 2));
}

TEST(Observable, ASubscriberThatJoinsDuringANotificationHearsTheNextWrite) {
  Observable<int> number;
  Heard heard;
  std::vector<Subscription> joined;
  const Subscription host = number.subscribe([&](int) {
    // Many at once, so that the list moves while this callback runs.
    for (int i = 0; i < 100; ++i) {
      joined.push_back(number.subscribe(into(heard)));
    }
  });
  number.set(1);
  EXPECT_THAT(heard, IsEmpty());
  joined.resize(1);
  number.set(2);
  EXPECT_THAT(heard, ElementsAre(2));
}

TEST(Observable, AWriteDuringANotificationIsANotificationOfItsOwn) {
  Observable<int> number;
  Heard first;
  Heard second;
  const Subscription doubling = number.subscribe([&](int value) {
    first.push_back(value);
    if (value < 4) {
      number.set(value * 2);
    }
  });
  const Subscription other = number.subscribe(into(second));
  number.set(1);
  EXPECT_THAT(first, ElementsAre(1, 2, 4));
  // Every one of the three writes is heard, with the value of the moment of the call.
  EXPECT_THAT(second, ElementsAre(4, 4, 4));
}

TEST(Observable, ASubscriptionEndedInAnInnerNotificationStaysEndedInTheOuterOnes) {
  Observable<int> number;
  Heard heard;
  Subscription own;
  own = number.subscribe([&](int value) {
    heard.push_back(value);
    if (value == 1) {
      number.set(2);
    } else {
      own.cancel();
    }
  });
  number.set(1);
  number.set(3);
  EXPECT_THAT(heard, ElementsAre(1, 2));
}

TEST(Observable, ASubscriberMayDestroyTheObservable) {
  auto number = std::make_unique<Observable<int>>();
  Heard heard;
  Heard others;
  const Subscription destroying = number->subscribe([&](const int& value) {
    number.reset();
    // The value that was told stays readable.
    heard.push_back(value);
  });
  const Subscription other = number->subscribe(into(others));
  number->set(1);
  EXPECT_THAT(heard, ElementsAre(1));
  EXPECT_THAT(others, IsEmpty());
}

}  // namespace
}  // namespace quorvex
